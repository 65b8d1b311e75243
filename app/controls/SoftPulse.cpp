#include "app/controls/SoftPulse.h"

#include "app/theme/SoftTheme.h"

#include <QEasingCurve>
#include <QPointF>

#include <cmath>
#include <utility>

namespace tallyview {

namespace {

constexpr int millisecondsBetweenMoments = 33;
constexpr qreal depth = 0.45;
// Of a mark in a soft colour less is not seen, and need not be drawn.
constexpr qreal smallestStep = 0.03;

std::shared_ptr<QTimer> sharedMoments() {
    static std::weak_ptr<QTimer> shared;
    std::shared_ptr<QTimer> moments = shared.lock();
    if (!moments) {
        // The last pulse may end at one of its moments.
        moments.reset(new QTimer, [](QTimer *timer) {
            timer->stop();
            timer->deleteLater();
        });
        moments->setTimerType(Qt::PreciseTimer);
        moments->start(millisecondsBetweenMoments);
        shared = moments;
    }
    return moments;
}

QEasingCurve easeInOut() {
    QEasingCurve curve(QEasingCurve::BezierSpline);
    curve.addCubicBezierSegment({0.42, 0}, {0.58, 1}, {1, 1});
    return curve;
}

} // namespace

void SoftPulse::setRunning(bool running) {
    if (running == isRunning()) {
        return;
    }
    if (running) {
        m_moments = sharedMoments();
        m_elapsed.start();
        connect(m_moments.get(), &QTimer::timeout, this, &SoftPulse::beat);
    } else {
        m_moments->disconnect(this);
        m_moments.reset();
        setLevel(1);
    }
    emit runningChanged();
}

void SoftPulse::beat() {
    static const QEasingCurve curve = easeInOut();
    const qreal swings = static_cast<qreal>(m_elapsed.elapsed()) / SoftTheme::pulseDuration();
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
