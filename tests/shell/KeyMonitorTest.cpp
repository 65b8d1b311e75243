#include "tests/shell/ShellFixture.h"

#include <QInputMethodEvent>

using namespace tallyview;
using namespace tallyview::test;

class KeyMonitorTest : public QObject {
    Q_OBJECT

private slots:
    void arrowsSelectAndReturnOpens() {
        for (const Qt::KeyboardModifiers modifiers :
             {Qt::NoModifier, Qt::ShiftModifier, Qt::ControlModifier}) {
            ShellFixture f(lately(3));
            f.model.setSelectedThreadID(std::nullopt);
            f.press(Qt::Key_Return, modifiers);
            QCOMPARE(f.opener.opened.size(), 0);
            QString walk;
            for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Down, Qt::Key_Down, Qt::Key_Up}) {
                f.press(key, modifiers);
                walk += f.selected();
            }
            QCOMPARE(walk, "1202");
            f.press(Qt::Key_Enter, modifiers | Qt::KeypadModifier);
            // A held key opens once.
            for (const bool repeats : {false, true, true}) {
                QKeyEvent press(QEvent::KeyPress, Qt::Key_Return, modifiers, "\r", repeats);
                QCoreApplication::sendEvent(f.window, &press);
            }
            QCOMPARE(f.opener.opened,
                     (QList<QByteArray>{"orvik://threads/2", "orvik://threads/2"}));
        }
    }

    void theSearchFieldKeepsItsKeys() {
        ShellFixture f(lately(3));
        const QString selected = f.selected();
        f.press(Qt::Key_K, Qt::ControlModifier);
        auto *field = qobject_cast<QQuickItem *>(f.window->focusObject());
        QVERIFY(field && field->inherits("QQuickTextInput"));
        QTest::keyClick(f.window, 't');
        f.press(Qt::Key_Down);
        QCOMPARE(f.selected(), selected);
        // What is still being composed filters nothing; what is committed does.
        QInputMethodEvent composing("zhi", {});
        QCoreApplication::sendEvent(field, &composing);
        QVERIFY(f.model.query() == "t");
        QInputMethodEvent committing;
        committing.setCommitString("直");
        QCoreApplication::sendEvent(field, &committing);
        QVERIFY(f.model.query() == "t直");
        // Up and Down move the caret.
        for (const auto &[key, position] : {std::pair(Qt::Key_Up, 0), {Qt::Key_Down, 2}}) {
            f.press(key);
            QCOMPARE(field->property("cursorPosition"), position);
        }
        f.press(Qt::Key_K, Qt::ControlModifier);
        QCOMPARE(f.window->focusObject(), field);
        QVERIFY(f.model.query() == "t直");
        f.model.clearFilters();
        f.settle();
        QCOMPARE(field->property("text"), "");
        f.press(Qt::Key_Escape);
        QVERIFY(f.window->focusObject() != field);
        f.press(Qt::Key_Down);
        QVERIFY(f.selected() != selected);
    }

    void escapeClosesOnlyWhatIsOnTop() {
        ShellFixture f(lately(3), {{"dashboardMode", "focus"}});
        f.workspace.focusProject()->open("project");
        f.settle();
        const auto open = [&f] {
            return QStringList{f.items("AppMenuItem").isEmpty() ? "" : "menu",
                               QString::fromStdString(f.model.query()),
                               f.window->focusObject()->inherits("QQuickTextInput") ? "field" : "",
                               f.workspace.focusProject()->title().isEmpty() ? "" : "project"}
                .join(u'|');
        };
        f.press(Qt::Key_K, Qt::ControlModifier);
        QTest::keyClick(f.window, 't');
        f.press(Qt::Key_F10);
        for (const char *state : {"menu|t||project", "|t|field|project", "||field|project",
                                  "|||project", "|||", "|||"}) {
            QCOMPARE(open(), state);
            f.press(Qt::Key_Escape);
        }
    }

    void escapeTakesHelpAwayFirst() {
        ShellFixture f(lately(3), {{"dashboardMode", "focus"}});
        f.workspace.focusProject()->open("atlas");
        f.settle();
        const QRectF row = f.rect(f.item("TaskRowView"));
        QTest::mouseMove(f.window, QPointF(row.right() - 21, row.center().y()).toPoint());
        const auto open = [&f] {
            return QStringList{f.text("在 Orvik 中打开") ? "help" : "",
                               f.workspace.focusProject()->title().isEmpty() ? "" : "project"}
                .join(u'|');
        };
        for (const char *state : {"help|project", "|project", "|"}) {
            QTRY_COMPARE(open(), state);
            f.press(Qt::Key_Escape);
        }
    }

    void theMenuHasItsKeys() {
        ShellFixture f(lately(3));
        const QString selected = f.selected();
        f.click(f.items("QQuickMenuBarItem")[1]);
        f.press(Qt::Key_Down);
        f.press(Qt::Key_Down);
        QCOMPARE(f.selected(), selected);
        f.press(Qt::Key_Return);
        QCOMPARE(f.opener.opened.size(), 1);
        f.press(Qt::Key_Down);
        QVERIFY(f.selected() != selected);
        f.press(Qt::Key_O, Qt::ControlModifier);
        QCOMPARE(f.opener.opened.size(), 2);
        QSignalSpy refreshed(&f.model, &DashboardModel::refreshFinished);
        f.press(Qt::Key_R, Qt::ControlModifier);
        QTRY_COMPARE(refreshed.count(), 1);
    }

    void aMenuBarKnowsThatItsMenuIsClosed() {
        ShellFixture f(lately(3));
        const auto titles = f.items("QQuickMenuBarItem");
        const auto pointTo = [&](int title) {
            QTest::mouseMove(f.window, f.rect(titles[title]).center().toPoint());
            f.settle();
        };
        for (const Qt::Key key : {Qt::Key_Escape, Qt::Key_Return}) {
            f.click(titles[1]);
            QCOMPARE(f.items("AppMenuItem").size(), 4);
            f.press(Qt::Key_Down);
            f.press(key);
            pointTo(0);
            QCOMPARE(f.items("AppMenuItem").size(), 0);
        }
        f.click(titles[1]);
        pointTo(0);
        QCOMPARE(f.items("AppMenuItem").size(), 1);
        f.click(titles[0]);
        QCOMPARE(f.items("AppMenuItem").size(), 0);
    }
};

QTEST_MAIN(KeyMonitorTest)
#include "KeyMonitorTest.moc"
