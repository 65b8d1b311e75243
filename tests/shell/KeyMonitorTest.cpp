#include "tests/shell/ShellFixture.h"

using namespace tallyview;
using namespace tallyview::test;

namespace {

std::vector<Sample> three() {
    return {{.id = "a", .age = 1}, {.id = "b", .age = 2}, {.id = "c", .age = 3}};
}

} // namespace

class KeyMonitorTest : public QObject {
    Q_OBJECT

private slots:
    void arrowsSelectAndReturnOpens_data() {
        QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
        QTest::newRow("plain") << Qt::KeyboardModifiers();
        QTest::newRow("Shift") << Qt::KeyboardModifiers(Qt::ShiftModifier);
        QTest::newRow("Control") << Qt::KeyboardModifiers(Qt::ControlModifier);
    }
    void arrowsSelectAndReturnOpens() {
        QFETCH(Qt::KeyboardModifiers, modifiers);
        ShellFixture f(three());
        f.model.setSelectedThreadID(std::nullopt);
        f.press(Qt::Key_Return, modifiers);
        QCOMPARE(f.opener.opened.size(), 0);
        QStringList walk;
        for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Down, Qt::Key_Down, Qt::Key_Up}) {
            f.press(key, modifiers);
            walk.append(f.selected());
        }
        QCOMPARE(walk.join(u' '), "b c a c");
        f.press(Qt::Key_Return, modifiers);
        f.press(Qt::Key_Enter, modifiers | Qt::KeypadModifier);
        QCOMPARE(f.opener.opened, (QList<QByteArray>{"orvik://threads/c", "orvik://threads/c"}));
    }

    void aHeldReturnOpensOnce() {
        ShellFixture f(three());
        for (const bool repeats : {false, true, true}) {
            QKeyEvent press(QEvent::KeyPress, Qt::Key_Return, {}, "\r", repeats);
            QCoreApplication::sendEvent(f.window, &press);
        }
        QCOMPARE(f.opener.opened.size(), 1);
    }

    void theSearchFieldKeepsItsKeys() {
        ShellFixture f(three());
        const QString selected = f.selected();
        f.press(Qt::Key_K, Qt::ControlModifier);
        auto *field = qobject_cast<QQuickItem *>(f.window->focusObject());
        QVERIFY(field && field->inherits("QQuickTextInput"));
        for (const char letter : {'t', 'a', 's', 'k'}) {
            QTest::keyClick(f.window, letter);
        }
        f.press(Qt::Key_Down);
        f.press(Qt::Key_Up);
        QCOMPARE(f.selected(), selected);
        f.press(Qt::Key_K, Qt::ControlModifier);
        QCOMPARE(field->property("text"), "task");
        QCOMPARE(f.window->focusObject(), field);
        f.press(Qt::Key_Escape);
        QVERIFY(f.window->focusObject() != field);
        f.press(Qt::Key_Down);
        QVERIFY(f.selected() != selected);
    }

    void anOpenMenuKeepsItsKeys() {
        ShellFixture f(three());
        const QString selected = f.selected();
        f.click(f.items("QQuickMenuBarItem")[1]);
        f.press(Qt::Key_Down);
        f.press(Qt::Key_Down);
        QCOMPARE(f.selected(), selected);
        f.press(Qt::Key_Return);
        QCOMPARE(f.opener.opened.size(), 1);
        f.press(Qt::Key_Down);
        QVERIFY(f.selected() != selected);
    }

    void shortcutsOfTheMenuStillWork() {
        ShellFixture f(three());
        QSignalSpy refreshed(&f.model, &DashboardModel::refreshFinished);
        f.press(Qt::Key_R, Qt::ControlModifier);
        QTRY_COMPARE(refreshed.count(), 1);
        f.press(Qt::Key_O, Qt::ControlModifier);
        QCOMPARE(f.opener.opened.size(), 1);
    }

    void pageKeysScrollWhateverHasTheFocus() {
        std::vector<Sample> many;
        for (int i = 0; i < 100; ++i) {
            many.push_back({.id = std::to_string(i), .age = i});
        }
        ShellFixture f(many);
        const QQuickItem *list = f.item("ThreadList");
        f.press(Qt::Key_End);
        QVERIFY(list->property("contentY").toDouble() > 1000);
        f.press(Qt::Key_Home);
        QCOMPARE(list->property("contentY").toDouble(), 0.0);
    }
};

QTEST_MAIN(KeyMonitorTest)
#include "KeyMonitorTest.moc"
