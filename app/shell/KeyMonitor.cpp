#include "app/shell/KeyMonitor.h"

#include <QGuiApplication>
#include <QInputMethodQueryEvent>
#include <QKeyEvent>
#include <QWindow>

namespace tallyview {

namespace {

bool isTextEditor(QObject *focus) {
    QInputMethodQueryEvent query(Qt::ImEnabled);
    return focus && QCoreApplication::sendEvent(focus, &query) &&
           query.value(Qt::ImEnabled).toBool();
}

} // namespace

KeyMonitor::KeyMonitor(QObject *parent) : QObject(parent) { qGuiApp->installEventFilter(this); }

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

bool KeyMonitor::isInMenu(const QObject *focus) const {
    for (auto item = qobject_cast<const QQuickItem *>(focus); item; item = item->parentItem()) {
        if (item == m_popups || item == m_menuBar) {
            return true;
        }
    }
    return false;
}

KeyMonitor::Action KeyMonitor::action(const QKeyEvent &key, const QWindow &window) const {
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
        AppCommands::focusTaskSearch();
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
