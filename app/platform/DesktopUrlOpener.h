#pragma once

#include "app/platform/UrlOpener.h"

namespace tallyview {

/// Opens URLs through the desktop's `xdg-open`; without that program nothing is opened.
class DesktopUrlOpener : public UrlOpener {
public:
    void open(const QByteArray &url, const QString &activationToken) override;
};

} // namespace tallyview
