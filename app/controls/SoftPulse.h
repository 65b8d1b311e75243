#pragma once

#include <QObject>
#include <QtQmlIntegration/qqmlintegration.h>

#include <memory>

namespace tallyview {

/// The opacity of something that pulses while it is `running`: from 1 to 0.55 and back,
/// ease-in-out. All pulses move at the same 30 moments a second, those that began together by the
/// same steps, so that several cost a window no more frames than one does. Main thread.
class SoftPulse : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(bool running READ isRunning WRITE setRunning NOTIFY runningChanged)
    /// 1 while it is not running.
    Q_PROPERTY(qreal level READ level NOTIFY levelChanged)

public:
    using QObject::QObject;

    bool isRunning() const { return m_moments != nullptr; }
    /// Begins at 1.
    void setRunning(bool running);
    qreal level() const { return m_level; }

signals:
    void runningChanged();
    void levelChanged();

private:
    class Moments;

    void beat();
    void setLevel(qreal level);

    std::shared_ptr<Moments> m_moments; ///< shared by all that run
    qint64 m_begin = 0;
    qreal m_level = 1;
};

} // namespace tallyview
