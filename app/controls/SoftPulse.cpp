#include "app/controls/SoftPulse.h"

#include "app/theme/SoftTheme.h"

#include <QEasingCurve>
#include <QElapsedTimer>
#include <QPointF>
#include <QTimer>

#include <cmath>
#include <utility>

namespace tallyview {

namespace {

constexpr int millisecondsBetweenMoments = 33;
constexpr qreal depth = 0.45;
// Of a mark in a soft colour less is not seen, and need not be drawn.
constexpr qreal smallestStep = 0.03;

QEasingCurve easeInOut() {
    QEasingCurve curve(QEasingCurve::BezierSpline);
    curve.addCubicBezierSegment({0.42, 0}, {0.58, 1}, {1, 1});
    return curve;
}

} // namespace

/// When pulses move.
class SoftPulse::Moments : public QTimer {
public:
    static std::shared_ptr<Moments> shared() {
        static std::weak_ptr<Moments> existing;
        std::shared_ptr<Moments> moments = existing.lock();
        if (!moments) {
            // The last pulse may end at one of its moments.
            moments.reset(new Moments, [](Moments *ended) {
                ended->stop();
                ended->deleteLater();
            });
            existing = moments;
        }
        return moments;
    }

    /// Milliseconds from any fixed time to the latest of them.
    qint64 latest() const { return m_latest; }

private:
    Moments() {
        connect(this, &QTimer::timeout, this, [this] { m_latest = m_clock.elapsed(); });
        setTimerType(Qt::PreciseTimer);
        start(millisecondsBetweenMoments);
        m_clock.start();
    }

    QElapsedTimer m_clock;
    qint64 m_latest = 0;
};

void SoftPulse::setRunning(bool running) {
    if (running == isRunning()) {
        return;
    }
    if (running) {
        m_moments = Moments::shared();
        m_begin = m_moments->latest();
        connect(m_moments.get(), &Moments::timeout, this, &SoftPulse::beat);
    } else {
        m_moments->disconnect(this);
        m_moments.reset();
        setLevel(1);
    }
    emit runningChanged();
}

void SoftPulse::beat() {
    static const QEasingCurve curve = easeInOut();
    const auto elapsed = static_cast<qreal>(m_moments->latest() - m_begin);
    const qreal swings = elapsed / SoftTheme::pulseDuration();
    const qreal part = std::fmod(swings, 2);
    const qreal eased = curve.valueForProgress(part < 1 ? part : 2 - part);
    setLevel(1 - std::round(depth * eased / smallestStep) * smallestStep);
}

void SoftPulse::setLevel(qreal level) {
    if (std::exchange(m_level, level) != level) {
        emit levelChanged();
    }
}

} // namespace tallyview
