#include "app/platform/IniUserDefaults.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLockFile>
#include <QSaveFile>
#include <QStandardPaths>

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace tallyview {

namespace {

// Bounds the writes of a drag, and lets another process finish its own write before it is read.
constexpr std::chrono::milliseconds syncDelay{200};

constexpr qint64 largestFile = 1 << 20; ///< a thousand times what there is to keep
constexpr QFile::Permissions onlyOwner = QFile::ReadOwner | QFile::WriteOwner;

/// `value` as the file gives it back, so that a value reads the same before and after a restart.
QVariant keptForm(const QVariant &value) {
    switch (value.typeId()) {
    case QMetaType::UnknownType:
        return value;
    case QMetaType::QDateTime:
        return value.toDateTime().toUTC().toString(Qt::ISODateWithMs);
    case QMetaType::QStringList:
    case QMetaType::QVariantList: {
        const QStringList texts = value.toStringList();
        return texts.size() == 1 ? QVariant(texts.constFirst()) : QVariant(texts);
    }
    default:
        return value.toString();
    }
}

/// What the file holds, nothing if there is no file, or why it cannot be read. The path may lead to
/// a pipe or a terminal: opening it neither blocks nor takes it over.
std::expected<QByteArray, QString> readFile(const QString &path) {
    const int descriptor =
        open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
    if (descriptor < 0 && errno == ENOENT) {
        return QByteArray();
    }
    struct stat status {};
    if (descriptor < 0 || fstat(descriptor, &status) != 0) {
        return std::unexpected(qt_error_string(errno));
    }
    QFile file;
    if (!S_ISREG(status.st_mode) ||
        !file.open(descriptor, QFile::ReadOnly, QFile::AutoCloseHandle)) {
        close(descriptor);
        return std::unexpected(QStringLiteral("not a regular file"));
    }
    const QByteArray bytes = file.read(largestFile + 1);
    if (bytes.size() > largestFile) {
        return std::unexpected(QStringLiteral("larger than 1 MiB"));
    }
    return bytes;
}

// Qt forgets that the last of the bytes could not be written unless they are flushed first.
bool writeFile(const QString &path, const QByteArray &bytes) {
    QSaveFile file(path);
    file.setDirectWriteFallback(true);
    return bytes.size() <= largestFile && file.open(QFile::WriteOnly) &&
           file.setPermissions(onlyOwner) && file.write(bytes) == bytes.size() && file.flush() &&
           file.commit();
}

void makeFolder(const QString &path) {
    if (!QFileInfo(path).isDir()) {
        makeFolder(QFileInfo(path).absolutePath());
        QDir().mkdir(path, onlyOwner | QFile::ExeOwner);
    }
}

QString nearestExistingFolder(QString path) {
    while (!QFileInfo(path).isDir() && path != QFileInfo(path).absolutePath()) {
        path = QFileInfo(path).absolutePath();
    }
    return path;
}

} // namespace

IniUserDefaults::IniUserDefaults(const QString &filePath, QObject *parent, Changes changes)
    : UserDefaults(parent)
    , m_path(filePath)
    , m_values(IniText(fileText().value_or(QByteArray())).values()) {
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
    if (changes == Changes::noticed) {
        watch();
    }
}

IniUserDefaults::~IniUserDefaults() { flush(); }

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

void IniUserDefaults::flush() { write(std::chrono::milliseconds(200)); }

/// False while another process writes. What cannot be written stays pending.
bool IniUserDefaults::write(std::chrono::milliseconds patience) {
    if (m_pending.isEmpty()) {
        return true;
    }
    makeFolder(QFileInfo(m_path).absolutePath());
    QLockFile lock(m_path + QStringLiteral(".lock"));
    lock.setStaleLockTime(std::chrono::seconds(10)); // writing takes milliseconds
    if (!lock.tryLock(static_cast<int>(patience.count())) &&
        lock.error() == QLockFile::LockFailedError) {
        return false;
    }
    if (const auto present = fileText()) {
        IniText text(*present);
        for (const auto &[key, kept] : m_pending.asKeyValueRange()) {
            text.set(key, kept);
        }
        if (text.text() == *present || writeFile(m_path, text.text())) {
            m_pending.clear();
        }
    }
    return true;
}

void IniUserDefaults::synchronize() {
    if (!write(std::chrono::milliseconds(0))) {
        m_syncTimer.start();
        return;
    }
    watch();
    IniText text(fileText().value_or(QByteArray()));
    for (const auto &[key, kept] : m_pending.asKeyValueRange()) {
        text.set(key, kept);
    }
    adopt(text.values());
}

/// Warns once if there is none, and says why.
std::expected<QByteArray, QString> IniUserDefaults::fileText() {
    auto text = readFile(m_path);
    const QString trouble = text ? QString() : text.error();
    if (std::exchange(m_trouble, trouble) != trouble && !trouble.isEmpty()) {
        qWarning("The settings in %s are left alone: %s", qPrintable(m_path), qPrintable(trouble));
    }
    return text;
}

void IniUserDefaults::adopt(const IniText::Values &values) {
    const IniText::Values before = std::exchange(m_values, values);
    QStringList keys = before.keys() + values.keys();
    keys.removeDuplicates();
    for (const QString &key : std::as_const(keys)) {
        if (before.value(key) != values.value(key)) {
            emit changed(key);
        }
    }
}

/// A file that was replaced and a folder that did not exist before have to be watched anew.
void IniUserDefaults::watch() {
    const QFileInfo file(m_path);
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
