#include "app/theme/SoftPalette.h"
#include "tests/shell/ShellFixture.h"

#include <QFile>
#include <QRegularExpression>

using namespace tallyview;
using namespace tallyview::test;

namespace {

/// Two projects; the one thread that runs is "019a3". No two figures of the sidebar are equal.
std::vector<Sample> twoProjects() {
    std::vector<Sample> samples{
        {.id = "019a3", .title = "First"},
        {.id = "b", .running = false, .cwd = "/src/Beacon", .title = "Second"}};
    for (const char *id : {"c", "d", "e"}) {
        samples.push_back({.id = id, .age = std::nullopt, .cwd = "/src/Beacon", .archived = true});
    }
    return samples;
}

/// Where the visible items of the types that `wanted` begins with stand below the menu bar.
QStringList places(const ShellFixture &f, const QStringList &wanted) {
    QStringList types;
    for (const QString &place : wanted) {
        types.append(place.section(u' ', 0, 0));
    }
    types.removeDuplicates();
    QStringList found;
    for (const QString &type : types) {
        for (const QQuickItem *item : f.items(type)) {
            const QRectF area = f.rect(item).translated(-f.rect(f.item("ContentView")).topLeft());
            found.append(type);
            for (const qreal number : {area.x(), area.y(), area.width(), area.height()}) {
                found.last() += u' ' + QString::number(number);
            }
        }
    }
    return found;
}

void compare(const QStringList &lines, const QStringList &patterns) {
    for (qsizetype i = 0; i < std::max(lines.size(), patterns.size()); ++i) {
        QString pattern = QRegularExpression::escape(patterns.value(i));
        pattern.replace("\\*", ".*");
        const QRegularExpression whole(QRegularExpression::anchoredPattern(pattern));
        if (!whole.match(lines.value(i)).hasMatch()) {
            QCOMPARE(lines.value(i), patterns.value(i));
        }
    }
}

/// Compares what the window shows with what looks.txt says of a situation.
void compareLooks(const ShellFixture &f, const QString &situation) {
    QFile file(QFINDTESTDATA("looks.txt"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    for (const QString &section : QString(file.readAll()).split("\n== ")) {
        QStringList lines = section.split(u'\n', Qt::SkipEmptyParts);
        const QString title = lines.takeFirst();
        if (title.startsWith(situation)) {
            const QString type = title.section(' ', -1);
            compare(type == "places" ? places(f, lines) : f.looks(f.item(type)), lines);
            QVERIFY2(!QTest::currentTestFailed(), qPrintable(title));
        }
    }
}

} // namespace

class WindowLookTest : public QObject {
    Q_OBJECT

private slots:
    void everyPieceLooksAsDesigned() {
        ShellFixture f(twoProjects(), {{"appearanceMode", "light"}});
        f.model.setSelectedThreadID({});
        f.settle();
        compareLooks(f, "nothing selected");
        f.model.setSelectedThreadID("019a3");
        f.model.togglePin(f.thread("019a3"));
        f.model.setProject("atlas");
        f.model.setPinnedOnly(true);
        f.settle();
        compareLooks(f, "threads");
        f.model.setPinnedOnly(false);
        f.toggleMode();
        compareLooks(f, "projects");
    }

    void everySurfaceFollowsTheAppearance() {
        ShellFixture f(twoProjects());
        const auto colorOf = [&f](const char *type, int x, int y) {
            const QPoint corner = f.rect(f.item(type)).topLeft().toPoint();
            return f.pixel(corner.x() + x, corner.y() + y).name();
        };
        // What the palette's components come to in 8 bits.
        for (const auto &[appearance, wanted] :
             {std::pair("dark", "#131b1f #1a2429 #0e1417 #0e1417 #1a2429 #2961e8 #1a2429"),
              std::pair("light", "#f1f6f8 #f7fafb #e6edf0 #e6edf0 #f7fafb #2961e8 #f7fafb")}) {
            f.defaults.setValue("appearanceMode", appearance);
            f.settle();
            // Canvas, sidebar, the picker's well, a project's badge, details, the selected row.
            QStringList colors{
                colorOf("ThreadIndexView", 5, 890),   colorOf("SidebarView", 5, 600),
                colorOf("AppearancePicker", 112, 16), colorOf("ProjectRow", 10, 20),
                colorOf("DetailPanelView", 10, 10),   colorOf("AllProjectsRow", 100, 4)};
            f.toggleMode();
            colors.append(colorOf("FocusProjectCard", 140, 40));
            QCOMPARE(colors.join(u' '), wanted);
            f.toggleMode();
        }
    }

    void everyButtonAnswersThePointer() {
        const ShellFixture f(twoProjects());
        const QPoint aside(5, f.window->height() - 5);
        QTest::mouseMove(f.window, aside);
        for (const char *type : {"AllProjectsRow", "QuickRow", "ProjectRow", "SoftIconButton",
                                 "SoftChoice", "RecencyCapsule", "ContinueButton"}) {
            const QRect area = f.rect(f.item(type)).toRect();
            const auto look = [&f, &area] {
                f.settle();
                return f.window->grabWindow().copy(area);
            };
            const QImage rest = look();
            QTest::mouseMove(f.window, area.center());
            const QImage hovered = look();
            QTest::mousePress(f.window, Qt::LeftButton, {}, area.center());
            const QImage pressed = look();
            QVERIFY2(rest != hovered && hovered != pressed && pressed != rest, type);
            QTest::mouseMove(f.window, aside);
            QTest::mouseRelease(f.window, Qt::LeftButton, {}, aside);
            QVERIFY2(look() == rest, type);
        }
    }

    void anAppearanceComesAllAtOnce() {
        ShellFixture f(twoProjects(), {}, true);
        f.defaults.setValue("appearanceMode", "dark");
        // Where a change by hand is animated.
        QCOMPARE(f.text("本周")->property("color").value<QColor>().name(),
                 SoftPalette::of(true, false).secondaryInk.name());
        f.system.setHighContrast(true);
        QCOMPARE(f.text("本周")->property("color").value<QColor>().name(),
                 SoftPalette::of(true, true).secondaryInk.name());
    }

    void longTextsAreCut() {
        const QString name = QString("Ab").repeated(150);
        const std::string id(300, 'x');
        ShellFixture f({{.id = id,
                         .cwd = "/" + name.toStdString(),
                         .title = QString("修复 very ").repeated(600).toStdString()}});
        f.select(id);
        const QQuickItem *shownTitle = f.items("SoftParagraph")[0];
        QCOMPARE(shownTitle->property("lineCount"), 7);
        QVERIFY(shownTitle->property("truncated").toBool());
        QCOMPARE(shownTitle->height() - shownTitle->property("topPadding").toDouble(),
                 7 * shownTitle->property("lineHeight").toDouble() -
                     shownTitle->property("spacing").toDouble());
        QVERIFY(f.text(name)->property("truncated").toBool());
        const QQuickItem *row = f.item("TaskRowView");
        for (const QQuickItem *text : f.items("SoftText")) {
            if (row->isAncestorOf(text)) {
                QVERIFY(f.rect(row).contains(f.rect(text)));
            }
        }
        // Nine properties; the directory and the id may have three lines, any other two.
        QString lines;
        for (const QQuickItem *value : f.items("QQuickTextEdit")) {
            lines += value->property("lineCount").toString();
        }
        QCOMPARE(lines, "211111133");
        f.toggleMode();
        QCOMPARE(f.text(name)->property("lineCount"), 2);
        QVERIFY(f.text(name)->property("truncated").toBool());
    }
};

QTEST_MAIN(WindowLookTest)
#include "WindowLookTest.moc"
