#include "app/shell/WindowChrome.h"

#include "app/platform/FrameAppearance.h"
#include "app/platform/SystemAppearance.h"
#include "app/shell/WindowAppearance.h"

#include <QGuiApplication>
#include <QPlatformSurfaceEvent>

namespace tallyview {

namespace {

constexpr int titleBarHeight = 38;

/// Qt draws a frame of its own, a mere stand-in, exactly where the shell does not.
bool hasStandIn(const QWindow &window) {
    return QGuiApplication::platformName().startsWith(QLatin1String("wayland")) &&
           !window.frameMargins().isNull();
}

bool isCreation(const QEvent &event) {
    return event.type() == QEvent::PlatformSurface &&
           static_cast<const QPlatformSurfaceEvent &>(event).surfaceEventType() ==
               QPlatformSurfaceEvent::SurfaceCreated;
}

} // namespace

WindowChrome::WindowChrome(const WindowAppearance &appearance, const SystemAppearance &system)
    : m_appearance(appearance)
    , m_system(system) {
    connect(&appearance, &WindowAppearance::changed, this, &WindowChrome::tellShell);
    connect(&system, &SystemAppearance::windowButtonsChanged, this, &WindowChrome::buttonsChanged);
}

void WindowChrome::setWindow(QWindow &window) {
    m_window = &window;
    connect(&window, &QWindow::windowStateChanged, this, &WindowChrome::stateChanged);
    window.installEventFilter(this);
    tellShell();
}

void WindowChrome::settle() {
    if (!hasStandIn(*m_window)) {
        return;
    }
    // A window that fills its place has been sized to have the stand-in round it.
    const QRect filled = m_window->geometry().marginsAdded(m_window->frameMargins());
    draw();
    if (m_window->isExposed() && !isRimShown()) {
        m_window->setGeometry(filled);
    }
}

void WindowChrome::draw() {
    m_window->setFlag(Qt::FramelessWindowHint);
    m_drawn = true;
    emit drawnChanged();
    emit stateChanged();
}

int WindowChrome::height() const { return m_drawn ? titleBarHeight : 0; }

bool WindowChrome::isTitleBarShown() const {
    return m_drawn && !states().testFlag(Qt::WindowFullScreen);
}

bool WindowChrome::isRimShown() const {
    return m_drawn && !(states() & (Qt::WindowMaximized | Qt::WindowFullScreen));
}

bool WindowChrome::isMaximized() const { return states().testFlag(Qt::WindowMaximized); }

QStringList WindowChrome::leftButtons() const { return m_system.windowButtons().left; }

QStringList WindowChrome::rightButtons() const { return m_system.windowButtons().right; }

void WindowChrome::perform(const QString &button) {
    if (button == QLatin1String("close")) {
        m_window->close();
    } else if (button == QLatin1String("maximize")) {
        m_window->setWindowStates(states() ^ Qt::WindowMaximized);
    } else {
        m_window->setWindowStates(states() | Qt::WindowMinimized);
    }
}

QString WindowChrome::symbol(const QString &button, bool maximized) {
    if (button == QLatin1String("close")) {
        return QStringLiteral("xmark");
    }
    if (button == QLatin1String("minimize")) {
        return QStringLiteral("minus");
    }
    return maximized ? QStringLiteral("arrow.down.right.and.arrow.up.left")
                     : QStringLiteral("square");
}

QString WindowChrome::title(const QString &button, bool maximized) {
    if (button == QLatin1String("close")) {
        return QStringLiteral("关闭");
    }
    if (button == QLatin1String("minimize")) {
        return QStringLiteral("最小化");
    }
    return maximized ? QStringLiteral("还原") : QStringLiteral("最大化");
}

bool WindowChrome::eventFilter(QObject *watched, QEvent *event) {
    if (watched == m_window && event->type() == QEvent::Expose) {
        settle();
    } else if (watched == m_window && isCreation(*event)) {
        tellWindowManager(*m_window, m_appearance.dark());
    }
    return false;
}

Qt::WindowStates WindowChrome::states() const {
    return m_window ? m_window->windowStates() : Qt::WindowStates();
}

void WindowChrome::tellShell() {
    chooseFrames(m_appearance.chosen());
    if (m_window && m_window->handle()) {
        tellWindowManager(*m_window, m_appearance.dark());
    }
}

} // namespace tallyview
