#include "app/platform/UserDefaults.h"

#include <cmath>

namespace tallyview {

std::optional<QString> UserDefaults::text(const QString &key) const {
    const QVariant kept = value(key);
    if (kept.typeId() != QMetaType::QString) {
        return std::nullopt;
    }
    return kept.toString();
}

std::optional<double> UserDefaults::number(const QString &key) const {
    bool isNumber = false;
    const double number = text(key).value_or(QString()).toDouble(&isNumber);
    if (!isNumber || !std::isfinite(number)) {
        return std::nullopt;
    }
    return number;
}

std::optional<QStringList> UserDefaults::stringList(const QString &key) const {
    const QVariant kept = value(key);
    if (kept.typeId() != QMetaType::QStringList && kept.typeId() != QMetaType::QString) {
        return std::nullopt;
    }
    return kept.toStringList();
}

} // namespace tallyview
