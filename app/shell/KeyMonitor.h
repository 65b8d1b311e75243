#pragma once

#include "app/shell/AppCommands.h"

#include <QObject>
#include <QPointer>
#include <QtQmlIntegration>

class QKeyEvent;
class QWindow;

namespace tallyview {

/// The keys of the whole window. While installed it sees each key press before shortcuts and
/// before the item that has the focus, and takes
/// - Command-K, for the search field, even while a text is edited;
/// - unless a text is edited: Return and Enter, which open the selected thread once however long
///   they are held, and Up and Down, which move the selection. Modifiers make no difference.
/// A menu that is open keeps every key. Main thread.
class KeyMonitor : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(
        tallyview::AppCommands *commands READ commands WRITE setCommands NOTIFY commandsChanged)
    Q_PROPERTY(bool installed READ isInstalled WRITE setInstalled NOTIFY installedChanged)

public:
    using QObject::QObject;

    AppCommands *commands() const { return m_commands; }
    /// Not owned; without commands every key passes.
    void setCommands(AppCommands *commands);
    bool isInstalled() const { return m_installed; }
    /// Installing twice installs once.
    void setInstalled(bool installed);

    bool eventFilter(QObject *receiver, QEvent *event) override;

signals:
    void commandsChanged();
    void installedChanged();

private:
    enum class Action { none, search, open, selectNext, selectPrevious };

    static Action action(const QKeyEvent &key, const QWindow &window);
    void perform(Action action);

    QPointer<AppCommands> m_commands;
    bool m_installed = false;
};

} // namespace tallyview
