#pragma once

#include <QObject>
#include <QPointer>
#include <QStringList>
#include <QWindow>
#include <QtQmlIntegration>

namespace tallyview {

class SystemAppearance;
class WindowAppearance;

/// The frame round the window. Where the shell draws it, the shell is told of the appearance.
/// Where the shell leaves it to the window (GNOME's does on Wayland), the window draws it in its
/// own look: the title bar comes on top of the window's sizes, its buttons are the desktop's
/// choice. Main thread.
class WindowChrome : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The application owns the frame")
    /// Height of the title bar in points, also while it does not show; 0 where the shell draws it.
    Q_PROPERTY(int height READ height NOTIFY drawnChanged)
    /// A full screen window has none.
    Q_PROPERTY(bool titleBarShown READ isTitleBarShown NOTIFY stateChanged)
    /// The rim that resizes the window; one that fills its place has none.
    Q_PROPERTY(bool rimShown READ isRimShown NOTIFY stateChanged)
    Q_PROPERTY(bool maximized READ isMaximized NOTIFY stateChanged)
    /// Names of buttons from left to right, see `WindowButtons`.
    Q_PROPERTY(QStringList leftButtons READ leftButtons NOTIFY buttonsChanged)
    Q_PROPERTY(QStringList rightButtons READ rightButtons NOTIFY buttonsChanged)

public:
    /// Both outlive this object.
    WindowChrome(const WindowAppearance &appearance, const SystemAppearance &system);

    /// The window, which has not been shown yet.
    void setWindow(QWindow &window);

    /// Draws the frame if the shell turns out not to. To be called right after the window has been
    /// shown; a shell that answers later is heard before the first frame is drawn.
    void settle();
    /// Has the window draw its frame from now on.
    void draw();

    int height() const;
    bool isTitleBarShown() const;
    bool isRimShown() const;
    bool isMaximized() const;
    QStringList leftButtons() const;
    QStringList rightButtons() const;

    /// What a button does, shows and is called.
    Q_INVOKABLE void perform(const QString &button);
    Q_INVOKABLE static QString symbol(const QString &button, bool maximized);
    Q_INVOKABLE static QString title(const QString &button, bool maximized);

    bool eventFilter(QObject *watched, QEvent *event) override;

signals:
    void drawnChanged();
    void stateChanged();
    void buttonsChanged();

private:
    Qt::WindowStates states() const;
    void tellShell();

    const WindowAppearance &m_appearance;
    const SystemAppearance &m_system;
    QPointer<QWindow> m_window;
    bool m_drawn = false;
};

} // namespace tallyview
