#pragma once

#include "app/model/DashboardModel.h"

#include <QtQml/qqml.h>

namespace tallyview {

/// The model as QML knows it.
struct DashboardModelType {
    Q_GADGET
    QML_FOREIGN(tallyview::DashboardModel)
    QML_NAMED_ELEMENT(DashboardModel)
    QML_UNCREATABLE("The application owns the one model")
};

} // namespace tallyview
