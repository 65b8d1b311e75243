#include "app/platform/IniUserDefaults.h"

#include <QDir>
#include <QFileInfo>
#include <QLockFile>
#include <QStandardPaths>

#include <algorithm>
#include <chrono>
#include <utility>

namespace tallyview {

namespace {

// Bounds the writes of a drag, and lets another process finish its own write before it is read.
constexpr std::chrono::milliseconds syncDelay{200};

/// `value` as the file gives it back, so that a value reads the same before and after a restart.
QVariant keptForm(const QVariant &value) {
    switch (value.typeId()) {
    case QMetaType::Bool:
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Float:
    case QMetaType::Double:
        return value.toString();
    case QMetaType::QStringList:
        return value.toStringList().size() == 1 ? value.toStringList().constFirst() : value;
    case QMetaType::QVariantList: {
        QStringList texts;
        for (const QVariant &entry : value.toList()) {
            if (keptForm(entry).typeId() != QMetaType::QString) {
                return value;
            }
            texts.append(entry.toString());
        }
        return keptForm(texts);
    }
    default:
        return value;
    }
}

QString nearestExistingFolder(QString path) {
    while (!QFileInfo(path).isDir() && path != QFileInfo(path).absolutePath()) {
        path = QFileInfo(path).absolutePath();
    }
    return path;
}

/// QSettings waits without end for the lock of another process, even one that is long gone.
bool isLocked(const QString &filePath) {
    QDir().mkpath(QFileInfo(filePath).absolutePath());
    QLockFile lock(filePath + QStringLiteral(".lock"));
    lock.setStaleLockTime(std::chrono::seconds(10)); // writing takes milliseconds
    return !lock.tryLock(0) && lock.error() == QLockFile::LockFailedError;
}

} // namespace

IniUserDefaults::IniUserDefaults(const QString &filePath, QObject *parent)
    : UserDefaults(parent)
    , m_file(filePath, QSettings::IniFormat)
    , m_values(fileValues()) {
    m_syncTimer.setSingleShot(true);
    m_syncTimer.setInterval(syncDelay);
    connect(&m_syncTimer, &QTimer::timeout, this, &IniUserDefaults::synchronize);
    const auto scheduleSync = [this] {
        if (!m_syncTimer.isActive()) {
            m_syncTimer.start();
        }
    };
    connect(&m_watcher, &QFileSystemWatcher::fileChanged, this, scheduleSync);
    connect(&m_watcher, &QFileSystemWatcher::directoryChanged, this, scheduleSync);
    watch();
}

IniUserDefaults::~IniUserDefaults() { write(); }

QString IniUserDefaults::defaultFilePath() {
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
           QStringLiteral("/orvik/tallyview.conf");
}

QVariant IniUserDefaults::value(const QString &key) const { return m_values.value(key); }

void IniUserDefaults::setValue(const QString &key, const QVariant &value) {
    change(key, keptForm(value));
}

void IniUserDefaults::remove(const QString &key) { change(key, QVariant()); }

void IniUserDefaults::change(const QString &key, const QVariant &kept) {
    if (m_values.value(key) == kept) {
        return;
    }
    m_pending.insert(key, kept);
    if (!m_syncTimer.isActive()) {
        m_syncTimer.start();
    }
    if (kept.isValid()) {
        m_values.insert(key, kept);
    } else {
        m_values.remove(key);
    }
    emit changed(key);
}

/// QSettings would write at the next turn of the event loop: it is given the values only here.
bool IniUserDefaults::write() {
    if (!m_pending.isEmpty() && isLocked(m_file.fileName())) {
        return false;
    }
    for (const auto &[key, kept] : std::exchange(m_pending, {}).asKeyValueRange()) {
        if (kept.isValid()) {
            m_file.setValue(key, kept);
        } else {
            m_file.remove(key);
        }
    }
    m_file.sync();
    return true;
}

void IniUserDefaults::synchronize() {
    if (!write()) {
        // The file lacks what is pending: it is read once that is written.
        m_syncTimer.start();
        return;
    }
    watch();
    adopt(fileValues());
}

void IniUserDefaults::adopt(const Values &values) {
    const Values before = std::exchange(m_values, values);
    QStringList keys = before.keys() + values.keys();
    keys.removeDuplicates();
    for (const QString &key : std::as_const(keys)) {
        if (before.value(key) != values.value(key)) {
            emit changed(key);
        }
    }
}

IniUserDefaults::Values IniUserDefaults::fileValues() const {
    Values values;
    const QStringList keys = m_file.childKeys();
    for (const QString &key : keys) {
        // An empty list is kept as the invalid value.
        const QVariant kept = m_file.value(key, QStringList());
        values.insert(key, kept.isValid() ? keptForm(kept) : QStringList());
    }
    return values;
}

/// A file that was replaced, and a folder that was not there before, have to be watched anew.
void IniUserDefaults::watch() {
    const QFileInfo file(m_file.fileName());
    QStringList wanted{nearestExistingFolder(file.absolutePath())};
    if (file.exists()) {
        wanted.append(file.absoluteFilePath());
    }
    const QStringList watched = m_watcher.files() + m_watcher.directories();
    for (const QString &path : watched) {
        if (!wanted.contains(path)) {
            m_watcher.removePath(path);
        }
    }
    m_watcher.addPaths(wanted);
}

} // namespace tallyview
