#pragma once

#include "app/shell/AppCommands.h"

#include <QObject>
#include <QQuickItem>
#include <QtQmlIntegration>

class QKeyEvent;
class QWindow;

namespace tallyview {

/// The keys of the whole window. It sees each key press before shortcuts and before the item that
/// has the focus, and takes
/// - Command-K, for the search field, even while a text is edited;
/// - unless a text is edited: Return and Enter, which open the selected thread once however long
///   they are held, and Up and Down, which move the selection. Modifiers make no difference.
/// Inside the menu bar and open popups every key passes. Main thread.
class KeyMonitor : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(tallyview::AppCommands *commands MEMBER m_commands REQUIRED)
    Q_PROPERTY(QQuickItem *menuBar MEMBER m_menuBar REQUIRED)
    /// The item that all popups of the window are in.
    Q_PROPERTY(QQuickItem *popups MEMBER m_popups REQUIRED)

public:
    explicit KeyMonitor(QObject *parent = nullptr);

    bool eventFilter(QObject *receiver, QEvent *event) override;

private:
    enum class Action { none, search, open, selectNext, selectPrevious };

    bool isInMenu(const QObject *focus) const;
    Action action(const QKeyEvent &key, const QWindow &window) const;
    void perform(Action action);

    // None is owned.
    AppCommands *m_commands = nullptr;
    QQuickItem *m_menuBar = nullptr;
    QQuickItem *m_popups = nullptr;
};

} // namespace tallyview
