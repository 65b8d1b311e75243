#pragma once

#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <optional>

namespace tallyview {

/// The user's settings: values under fixed keys that outlive the process.
///
/// Belongs to the main thread. Nothing reports a failed write; the value then lives as long as
/// the process.
class UserDefaults : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    /// The value under `key` in the form in which it is kept, the same before and after a restart:
    /// a text (numbers as digits, booleans as "true" or "false", a date and time as ISO 8601 writes
    /// it) or a list of texts. Invalid when absent.
    virtual QVariant value(const QString &key) const = 0;
    /// Keeps `value` under `key`; an invalid one removes the key. Cheap enough for every step of a
    /// drag.
    virtual void setValue(const QString &key, const QVariant &value) = 0;
    virtual void remove(const QString &key) = 0;

    // The value under `key` as one type: nothing when it is absent or of another form.

    std::optional<QString> text(const QString &key) const;
    std::optional<double> number(const QString &key) const; ///< always finite
    /// A text counts as a list of one.
    std::optional<QStringList> stringList(const QString &key) const;

signals:
    /// The value under `key` now differs from before, changed here or by another process. Emitted
    /// once per change, when value() already answers the new value.
    void changed(const QString &key);
};

} // namespace tallyview
