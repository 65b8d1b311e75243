#include "app/shell/KeyMonitor.h"

#include <QGuiApplication>
#include <QInputMethodQueryEvent>
#include <QKeyEvent>
#include <QQuickItem>
#include <QWindow>

#include <utility>

namespace tallyview {

namespace {

/// Whether the focus is in an open popup or in the menu bar.
bool isInMenu(const QObject *focus) {
    for (auto item = qobject_cast<const QQuickItem *>(focus); item; item = item->parentItem()) {
        if (item->inherits("QQuickOverlay") || item->inherits("QQuickMenuBar")) {
            return true;
        }
    }
    return false;
}

bool isTextEditor(QObject *focus) {
    QInputMethodQueryEvent query(Qt::ImEnabled);
    return focus && QCoreApplication::sendEvent(focus, &query) &&
           query.value(Qt::ImEnabled).toBool();
}

} // namespace

void KeyMonitor::setCommands(AppCommands *commands) {
    if (m_commands != commands) {
        m_commands = commands;
        emit commandsChanged();
    }
}

void KeyMonitor::setInstalled(bool installed) {
    if (std::exchange(m_installed, installed) == installed) {
        return;
    }
    if (installed) {
        qGuiApp->installEventFilter(this);
    } else {
        qGuiApp->removeEventFilter(this);
    }
    emit installedChanged();
}

bool KeyMonitor::eventFilter(QObject *receiver, QEvent *event) {
    const bool isPress = event->type() == QEvent::KeyPress;
    const QWindow *window =
        isPress ? qobject_cast<QWindow *>(receiver) : QGuiApplication::focusWindow();
    if ((!isPress && event->type() != QEvent::ShortcutOverride) || !window || !m_commands) {
        return false;
    }
    const auto &key = *static_cast<QKeyEvent *>(event);
    const Action chosen = action(key, *window);
    if (chosen == Action::none) {
        return false;
    }
    // A shortcut that is overridden here comes back as a key press.
    event->accept();
    if (isPress && !(chosen == Action::open && key.isAutoRepeat())) {
        perform(chosen);
    }
    return true;
}

KeyMonitor::Action KeyMonitor::action(const QKeyEvent &key, const QWindow &window) {
    QObject *focus = window.focusObject();
    if (isInMenu(focus)) {
        return Action::none;
    }
    if (key.modifiers().testFlag(Qt::ControlModifier) && key.key() == Qt::Key_K) {
        return Action::search;
    }
    if (isTextEditor(focus)) {
        return Action::none;
    }
    switch (key.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return Action::open;
    case Qt::Key_Down:
        return Action::selectNext;
    case Qt::Key_Up:
        return Action::selectPrevious;
    default:
        return Action::none;
    }
}

void KeyMonitor::perform(Action action) {
    switch (action) {
    case Action::search:
        emit m_commands->focusTaskSearch();
        break;
    case Action::open:
        m_commands->openSelected();
        break;
    case Action::selectNext:
        m_commands->model()->moveSelection(1);
        break;
    case Action::selectPrevious:
        m_commands->model()->moveSelection(-1);
        break;
    case Action::none:
        break;
    }
}

} // namespace tallyview
