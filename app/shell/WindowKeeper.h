#pragma once

#include <QObject>
#include <QRect>
#include <QTimer>

#include <optional>

class QWindow;

namespace tallyview {

class UserDefaults;
class WindowChrome;

/// Shows the application's one window as the user left it, and remembers how they leave it: where
/// it stands and how large it is ("windowFrame": x, y, width and height in points, of the window
/// while it is not maximized, without a title bar of its own) and whether it is maximized
/// ("windowMaximized"). Main thread.
class WindowKeeper : public QObject {
    Q_OBJECT

public:
    /// The window is not shown yet and has its default size; `chrome` is its frame. All outlive
    /// this object.
    WindowKeeper(QWindow &window, WindowChrome &chrome, UserDefaults &defaults);

    /// Shows the window, even if it is closed or minimized, and brings it to the front as far as
    /// the desktop permits. If no place was remembered, the desktop chooses one.
    void present(const QString &activationToken);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    std::optional<QRect> rememberedFrame() const;
    void restoreFrame();
    void show();
    void remember();

    QWindow &m_window;
    WindowChrome &m_chrome;
    UserDefaults &m_defaults;
    QTimer m_settled;
};

} // namespace tallyview
