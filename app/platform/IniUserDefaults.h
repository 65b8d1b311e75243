#pragma once

#include "app/platform/IniText.h"
#include "app/platform/UserDefaults.h"

#include <QFileSystemWatcher>
#include <QTimer>

#include <chrono>
#include <expected>

namespace tallyview {

/// User defaults in the section [General] of an INI file.
///
/// A change is written within a quarter of a second, and at destruction at the latest. A change
/// that another process writes, in place or by replacing the file, is noticed; if both changed the
/// same key, the one written last stays. A change waits while another process holds the file's
/// lock; a lock left behind is broken after ten seconds. Anything but a regular file of up to 1 MiB
/// is neither read nor written, and standard error says so once. Only the user may read what is
/// written.
class IniUserDefaults : public UserDefaults {
    Q_OBJECT

public:
    /// Whether changes of other processes are noticed before this one writes. The kernel takes its
    /// time to let go of a file that was watched, which a process that ends at once would wait for.
    enum class Changes { noticed, ignored };

    /// The file and its folder need not exist; the first write creates them.
    explicit IniUserDefaults(const QString &filePath = defaultFilePath(), QObject *parent = nullptr,
                             Changes changes = Changes::noticed);
    ~IniUserDefaults() override;

    /// orvik/tallyview.conf in the user's configuration folder ($XDG_CONFIG_HOME).
    static QString defaultFilePath();

    QVariant value(const QString &key) const override;
    void setValue(const QString &key, const QVariant &value) override;
    void remove(const QString &key) override;

    /// Writes now what is not yet written.
    void flush();

private:
    void change(const QString &key, const QVariant &kept);
    bool write(std::chrono::milliseconds patience);
    void synchronize();
    std::expected<QByteArray, QString> fileText();
    void adopt(const IniText::Values &values);
    void watch();

    QString m_path;
    QString m_trouble;         ///< why the file is left alone
    IniText::Values m_values;  ///< what value() answers
    IniText::Values m_pending; ///< not yet written; invalid for a key to remove
    QTimer m_syncTimer;
    QFileSystemWatcher m_watcher;
};

} // namespace tallyview
