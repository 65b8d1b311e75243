#pragma once

#include <QByteArray>
#include <QList>
#include <QMap>
#include <QString>
#include <QVariant>

namespace tallyview {

/// The text of an INI file as QSettings writes it. Only plain values of the section [General] are
/// read: texts and lists of texts. A serialized object counts as absent and is not deserialized.
/// Plain value, any thread.
class IniText {
public:
    /// By key: a QString or a QStringList.
    using Values = QMap<QString, QVariant>;

    explicit IniText(const QByteArray &text = {});

    Values values() const;
    /// `value` is one of the two types or invalid, which removes the key. A key consists of ASCII
    /// letters and digits. All other lines stay.
    void set(const QString &key, const QVariant &value);
    QByteArray text() const;

private:
    struct Line {
        QByteArray text;
        QString key; ///< empty if not a value of [General]
    };

    qsizetype placeForNewKey();

    QList<Line> m_lines;
};

} // namespace tallyview
