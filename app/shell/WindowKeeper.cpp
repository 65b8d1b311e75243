#include "app/shell/WindowKeeper.h"

#include "app/platform/UserDefaults.h"
#include "app/shell/WindowChrome.h"
#include "app/shell/WindowFrame.h"

#include <QEvent>
#include <QGuiApplication>
#include <QScreen>
#include <QWindow>

namespace tallyview {

namespace {

const QString frameKey = QStringLiteral("windowFrame");
const QString maximizedKey = QStringLiteral("windowMaximized");

constexpr int farthest = 1'000'000; ///< no screen reaches this far

QList<QRect> screens() {
    QList<QRect> available;
    for (const QScreen *screen : QGuiApplication::screens()) {
        available.append(screen->availableGeometry());
    }
    return available;
}

} // namespace

WindowKeeper::WindowKeeper(QWindow &window, WindowChrome &chrome, UserDefaults &defaults)
    : m_window(window)
    , m_chrome(chrome)
    , m_defaults(defaults) {
    // A window that is being maximized has its new size a moment before it counts as maximized.
    m_settled.setInterval(300);
    m_settled.setSingleShot(true);
    connect(&m_settled, &QTimer::timeout, this, &WindowKeeper::remember);
    const auto wait = [this] { m_settled.start(); };
    connect(&window, &QWindow::xChanged, this, wait);
    connect(&window, &QWindow::yChanged, this, wait);
    connect(&window, &QWindow::widthChanged, this, wait);
    connect(&window, &QWindow::heightChanged, this, wait);
    connect(&window, &QWindow::visibilityChanged, this, wait);
    connect(&chrome, &WindowChrome::drawnChanged, this, &WindowKeeper::restoreFrame);
    window.installEventFilter(this);
}

void WindowKeeper::present(const QString &activationToken) {
    if (!activationToken.isEmpty()) {
        // Qt's Wayland windows look for it there when they are activated, which later releases do
        // as soon as a window is shown.
        qputenv("XDG_ACTIVATION_TOKEN", activationToken.toUtf8());
    }
    if (!m_window.isVisible()) {
        restoreFrame();
        show();
        m_chrome.settle();
    }
    m_window.setWindowStates(m_window.windowStates() & ~Qt::WindowMinimized);
    if (QGuiApplication::platformName() == QLatin1String("xcb")) {
        m_window.raise(); // elsewhere windows may not raise themselves, and Qt complains
    }
    m_window.requestActivate();
}

/// The frame is final when the window closes, as it also does on quitting.
bool WindowKeeper::eventFilter(QObject *watched, QEvent *event) {
    if (watched == &m_window && event->type() == QEvent::Close && m_settled.isActive()) {
        m_settled.stop();
        remember();
    }
    return false;
}

std::optional<QRect> WindowKeeper::rememberedFrame() const {
    QList<int> numbers;
    for (const QString &text : m_defaults.stringList(frameKey).value_or(QStringList())) {
        bool isNumber = false;
        const int number = text.toInt(&isNumber);
        if (isNumber && number >= -farthest && number <= farthest) {
            numbers.append(number);
        }
    }
    if (numbers.size() != 4) {
        return std::nullopt;
    }
    return QRect(numbers[0], numbers[1], numbers[2], numbers[3] + m_chrome.height());
}

void WindowKeeper::restoreFrame() {
    const auto frame = rememberedFrame();
    const QRect fitted = fittedFrame(frame.value_or(QRect(QPoint(), m_window.size())),
                                     m_window.minimumSize(), screens());
    if (frame) {
        m_window.setGeometry(fitted);
    } else {
        m_window.resize(fitted.size());
    }
}

void WindowKeeper::show() {
    if (m_defaults.text(maximizedKey) == QLatin1String("true")) {
        m_window.showMaximized();
    } else {
        m_window.showNormal();
    }
}

void WindowKeeper::remember() {
    const QWindow::Visibility visibility = m_window.visibility();
    if (visibility == QWindow::Maximized) {
        m_defaults.setValue(maximizedKey, true);
    } else if (visibility == QWindow::Windowed) {
        m_defaults.setValue(maximizedKey, false);
        QStringList frame;
        for (const int number : {m_window.x(), m_window.y(), m_window.width(),
                                 m_window.height() - m_chrome.height()}) {
            frame.append(QString::number(number));
        }
        m_defaults.setValue(frameKey, frame);
    }
}

} // namespace tallyview
