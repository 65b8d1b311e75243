#include "tests/shell/ShellFixture.h"

using namespace tallyview;
using namespace tallyview::test;

namespace {

/// Two projects, one thread each; the running one is "019a3".
std::vector<Sample> twoProjects() {
    return {{.id = "019a3", .title = "First"},
            {.id = "b", .running = false, .cwd = "/src/Beacon", .title = "Second"}};
}

std::string repeated(const std::string &text, int count) {
    std::string result;
    for (int i = 0; i < count; ++i) {
        result += text;
    }
    return result;
}

/// Where the only visible item of a type stands below the menu bar.
QString inContent(const ShellFixture &f, const QQuickItem *item) {
    const QPointF origin = f.rect(f.item("ContentView")).topLeft();
    const QRectF area = f.rect(item).translated(-origin);
    return QStringLiteral("%1 %2 %3 %4")
        .arg(area.x())
        .arg(area.y())
        .arg(area.width())
        .arg(area.height());
}
QString inContent(const ShellFixture &f, const QString &type) {
    QStringList places;
    for (const QQuickItem *item : f.items(type)) {
        places.append(inContent(f, item));
    }
    return places.join(QStringLiteral(", "));
}

const char *const sidebarHeaderLook = R"(
surface 31.5x31.5 radius 7.3125 accent shadow softShadowDark 4 2 3
text "Orvik" 19 700 system primaryInk
text "本地任务看板" 10 500 system secondaryInk
symbol %1 13 600 secondaryInk
surface 34x34 radius 9 raisedSurface rim hairline shadow softShadowDark 3 2 2 shadow softShadowLight 3 -2 -2)";

const char *const sidebarFooterLook = R"(
surface 142x40 radius 10 insetSurface
surface 42x32 radius 8 %1
symbol sun.max 12 500 %2
surface 42x32 radius 8 %3
symbol moon 12 500 %4
surface 42x32 radius 8 clear
symbol display 12 500 secondaryInk
symbol cylinder 13 400 secondaryInk
text "SQLite · 本机只读" 9 600 system primaryInk
text "不会回写 Orvik" 8 400 system mutedInk)";

const char *const navigationLook = R"(
text "项目" 11 600 system secondaryInk
symbol square.grid.2x2 14 600 primaryInk
text "全部项目" 12 600 system primaryInk
text "2" 9 500 system primaryInk
surface 196x42 radius 9 clear
surface 24x24 radius 6 insetSurface
symbol star 11 600 primaryInk
text "24H" 10 700 monospaced primaryInk
text "今天更新" 10 400 system secondaryInk
text "2" 9 400 system secondaryInk
surface 196x36 radius 8 clear
surface 24x24 radius 6 insetSurface
symbol star.fill 11 600 primaryInk
text "PIN" 10 700 monospaced primaryInk
text "已固定" 10 400 system secondaryInk
text "1" 9 400 system secondaryInk
surface 196x36 radius 8 insetSurface
surface 24x24 radius 6 insetSurface
symbol star 11 600 primaryInk
text "ARC" 10 700 monospaced primaryInk
text "已归档" 10 400 system secondaryInk
text "0" 9 400 system secondaryInk
surface 196x36 radius 8 clear
surface 30x30 radius 7 accent@0.16
text "ATL" 9 700 monospaced accent lines 1
text "atlas" 11.5 600 rounded primaryInk lines 1
text "1" 9 400 monospaced secondaryInk
surface 196x40 radius 8 accent@0.09
surface 30x30 radius 7 insetSurface
text "BEA" 9 700 monospaced primaryInk lines 1
text "Beacon" 11.5 400 rounded primaryInk lines 1
text "1" 9 400 monospaced secondaryInk
surface 196x40 radius 8 clear)";

const char *const focusSummaryLook = R"(
symbol scope 13 700 accent
text "专注模式" 13 700 rounded accent
text "主界面只保留项目入口。选择项目后，再逐步进入相关任务。" 10 400 system secondaryInk
surface 89x* radius 11 liftedSurface rim hairline
text "2" 18 700 monospaced primaryInk
text "项目" 9 500 rounded mutedInk
surface 89x* radius 11 liftedSurface rim hairline
text "1" 18 700 monospaced running
text "进行中" 9 500 rounded mutedInk
surface 188x* radius 11 insetSurface@0.62
symbol sparkles 11 500 accent
text "点击右上角按钮随时返回标准模式" 9 400 system mutedInk)";

const char *const detailLook = R"(
surface *x26 radius 13 accent@0.1
text "ATL-019A3" 9 700 monospaced accent lines 1
symbol star.fill 13 400 secondaryInk
surface 30x30 radius 9 raisedSurface rim hairline shadow softShadowDark 3 2 2 shadow softShadowLight 3 -2 -2
symbol doc.on.doc 13 400 secondaryInk
surface 30x30 radius 9 raisedSurface rim hairline shadow softShadowDark 3 2 2 shadow softShadowLight 3 -2 -2
surface *x26 radius 13 running@0.09
text "进行中" 9 600 rounded running
text "First" 19 700 rounded primaryInk lines 7
text "该任务没有可用的预览文本。" 10 400 rounded secondaryInk lines 6
surface 288x48 radius 8 accent shadow accent@0.28 7 0 4
text "在 Orvik 中继续" 12 700 rounded white
symbol arrow.right 12 700 white
text "项目" 9 400 rounded secondaryInk
text "更新时间" 9 400 rounded secondaryInk
text "来源" 9 400 rounded secondaryInk
text "模型" 9 400 rounded secondaryInk
text "推理强度" 9 400 rounded secondaryInk
text "Token" 9 400 rounded secondaryInk
text "分支" 9 400 rounded secondaryInk
text "工作目录" 9 400 rounded secondaryInk
text "Thread ID" 9 400 rounded secondaryInk
surface 288x* radius 10 insetSurface@0.66 rim hairline
symbol info.circle 12 500 accent
text "详情用于确认任务上下文；任务正文和蓝色按钮都会打开 Orvik 原始对话，Tallyview 不复制对话功能。" 9 400 rounded secondaryInk)";

const char *const emptyDetailLook = R"(
symbol sidebar.right 30 300 accent
text "选择一个任务" 18 700 system primaryInk
text "这里会显示上下文，并提供跳回 Orvik 的入口。" 10 400 system secondaryInk)";

const char *const indexLook = R"(
text "任务动态" 22 700 rounded primaryInk lines 1
text "重置筛选" 10 600 rounded accent*
symbol arrow.clockwise 11 600 secondaryInk
surface 30x30 radius 9 raisedSurface rim hairline shadow softShadowDark 3 2 2 shadow softShadowLight 3 -2 -2
surface 310x44 radius 11 raisedSurface rim rimLight shadow softShadowDark 5.04 3.6 3.6 shadow softShadowLight 4.32 -2.88 -2.88
surface 98x36 radius 8 accent
text "进行中" 11 600 rounded white
surface 98x36 radius 8 clear
text "已完成" 11 600 rounded secondaryInk
surface 98x36 radius 8 clear
text "全部" 11 600 rounded secondaryInk
surface 495x42 radius 10 insetSurface
symbol magnifyingglass 12 500 mutedInk
text "搜索任务标题、项目或工作目录…" 11 400 rounded mutedInk
text "⌘ K" 8 500 monospaced mutedInk
surface 495x42 radius 10 clear
surface *x30 radius 15 raisedSurface rim rimLight shadow softShadowDark 4 2 2
text "刚刚" 10 500 rounded secondaryInk
surface *x30 radius 15 accent shadow accent@0.22 4 2 2
text "今天" 10 600 rounded white
surface *x30 radius 15 raisedSurface rim rimLight shadow softShadowDark 4 2 2
text "本周" 10 500 rounded secondaryInk
surface *x30 radius 15 raisedSurface rim rimLight shadow softShadowDark 4 2 2
text "更早" 10 500 rounded secondaryInk
text "1 条" 9 400 monospaced mutedInk
surface 15x15 radius 7.5 raisedSurface rim rimLight
text "刚刚" 11 600 rounded secondaryInk
text "1" 8 500 monospaced mutedInk
surface 788x58 radius 11 liftedSurface rim accent@0.72 shadow softShadowDark 6 3 3 shadow softShadowLight 4 -2 -2
symbol waveform.path.ecg 14 600 running
text "First" 12 600 rounded primaryInk lines 1
text "ATL / ATLAS / CLI" 8 500 monospaced accent@0.78 lines 1
text "刚刚" 9 400 rounded secondaryInk lines 1
symbol chevron.right 12 700 accent)";

const char *const gridLook = R"(
text "专注空间" 24 700 system primaryInk lines 1
text "先选择项目，再进入它的任务动态" 11 400 system secondaryInk lines 1
text "2" 16 700 monospaced primaryInk
text "项目" 9 500 rounded mutedInk
text "1" 16 700 monospaced running
text "进行中" 9 500 rounded mutedInk
text "2" 16 700 monospaced primaryInk
text "全部" 9 500 rounded mutedInk
surface 275x190 radius 16 raisedSurface rim hairline shadow softShadowDark@0.48 5 5 6 shadow softShadowLight 6 -4 -4
surface 38x38 radius 10 accent@0.11
text "ATL" 10 700 system accent
surface 32x32 radius 9 insetSurface@0.7
symbol arrow.up.right 11 600 secondaryInk
text "atlas" 16 700 system primaryInk lines 2
text "最近更新 刚刚" 9 400 system mutedInk lines 1
text "1 进行中" 9 500 system secondaryInk
text "0 已完成" 9 500 system secondaryInk
text "1 个任务" 9 500 system secondaryInk
surface 275x190 *)";

} // namespace

class WindowLookTest : public QObject {
    Q_OBJECT

private slots:
    void everyPieceLooksAsDesigned_data() {
        QTest::addColumn<bool>("dark");
        QTest::newRow("light") << false;
        QTest::newRow("dark") << true;
    }
    void everyPieceLooksAsDesigned() {
        QFETCH(const bool, dark);
        ShellFixture f(twoProjects(), {{"appearanceMode", dark ? "dark" : "light"}});
        const auto looks = [&](const char *type) { return f.looks(f.item(type), dark); };
        const QString footer =
            dark ? QString(sidebarFooterLook).arg("clear", "secondaryInk", "accent", "white")
                 : QString(sidebarFooterLook).arg("accent", "white", "clear", "secondaryInk");
        f.model.setSelectedThreadID({});
        f.settle();
        QVERIFY(f.matches(looks("DetailPanelView"), emptyDetailLook));
        f.model.setSelectedThreadID("019a3");
        f.model.togglePin(f.thread("019a3"));
        f.model.setProject("atlas");
        f.model.setPinnedOnly(true);
        f.settle();
        QVERIFY(f.matches(looks("SidebarView"), QString(sidebarHeaderLook).arg("square.grid.2x2") +
                                                    navigationLook + footer));
        QVERIFY(f.matches(looks("ThreadIndexView"), indexLook));
        QVERIFY(f.matches(looks("DetailPanelView"), detailLook));
        f.workspace.toggleMode();
        f.model.setPinnedOnly(false);
        f.settle();
        QVERIFY(
            f.matches(looks("SidebarView"), QString(sidebarHeaderLook).arg("rectangle.split.3x1") +
                                                focusSummaryLook + footer));
        QVERIFY(f.matches(looks("FocusProjectGridView").section('\n', 0, 18), gridLook));
    }

    void everyPieceStandsInItsPlace() {
        ShellFixture f(twoProjects());
        f.model.setSelectedThreadID("019a3");
        f.settle();
        QCOMPARE(inContent(f, "ContentView"), "0 0 1440 900");
        QCOMPARE(inContent(f, "SidebarView"), "0 0 224 900");
        QCOMPARE(inContent(f, "SidebarResizeHandle"), "224 0 8 900");
        QCOMPARE(inContent(f, "ThreadIndexView"), "232 0 867 900");
        QCOMPARE(inContent(f, "DetailPanelView"), "1100 0 340 900");

        QCOMPARE(inContent(f, "BrandHeader"), "17 0 190 78");
        QCOMPARE(inContent(f, "OrvikIconView"), "17 21 36 36");
        QCOMPARE(f.rect(f.text("Orvik")).left(), 64.0);
        QCOMPARE(inContent(f, f.items("SoftIconButton")[0]), "173 22 34 34");
        QCOMPARE(inContent(f, "AllProjectsRow"), "14 116 196 42");
        QCOMPARE(inContent(f, "QuickRow"), "14 162 196 36, 14 202 196 36, 14 242 196 36");
        QCOMPARE(inContent(f, "ProjectRow"), "14 303 196 40, 14 347 196 40");
        QCOMPARE(f.rect(f.text("atlas")).left(), 60.0);
        QCOMPARE(inContent(f, "AppearancePicker"), "0 780 224 68");
        QCOMPARE(inContent(f, "StatusFooter"), "0 848 224 52");

        QCOMPARE(inContent(f, "DetailToolbar"), "1126 16 288 30");
        QCOMPARE(inContent(f, f.items("SoftIconButton")[2]), "1346 16 30 30");
        QCOMPARE(inContent(f, f.items("SoftIconButton")[3]), "1384 16 30 30");
        const QRectF pill = f.rect(f.item("StatusPill"));
        QCOMPARE(pill.top() - f.rect(f.item("DetailToolbar")).bottom(), 26.0);
        const QRectF title = f.rect(f.items("SoftParagraph")[0]);
        QCOMPARE(title.top(), pill.bottom());
        QCOMPARE(f.items("SoftParagraph")[0]->property("topPadding"), 18.0);
        QCOMPARE(f.items("SoftParagraph")[1]->property("topPadding"), 14.0);
        const QRectF button = f.rect(f.item("ContinueButton"));
        QCOMPARE(button.top() - f.rect(f.items("SoftParagraph")[1]).bottom(), 24.0);
        const auto rows = f.items("PropertyRow");
        QCOMPARE(f.rect(rows[0]).top() - button.bottom(), 49.0);
        for (int i = 1; i < rows.size(); ++i) {
            QCOMPARE(f.rect(rows[i]).top() - f.rect(rows[i - 1]).bottom(), 16.0);
        }
        QCOMPARE(f.rect(f.item("InfoBox")).top() - f.rect(rows.last()).bottom(), 26.0);

        f.workspace.toggleMode();
        f.settle();
        QCOMPARE(inContent(f, "FocusProjectGridView"), "232 0 1208 900");
        QCOMPARE(f.rect(f.item("FocusSummaryView")).top(),
                 f.rect(f.item("SidebarView")).top() + 78);
        const auto metrics = f.items("FocusMetric");
        QCOMPARE(f.rect(metrics[0]).left(), 18.0);
        QCOMPARE(f.rect(metrics[1]).left() - f.rect(metrics[0]).right(), 10.0);
        const auto figures = f.items("SummaryFigure");
        QCOMPARE(f.rect(figures[2]).right(), 1440.0 - 30);
        QCOMPARE(f.rect(figures[2]).left() - f.rect(figures[1]).right(), 20.0);
        QCOMPARE(figures[0]->width(), 52.0);
        const QRectF card = f.rect(f.items("FocusProjectCard")[0]);
        QCOMPARE(card.top(), f.rect(f.item("FocusGridHeader")).bottom());
        QCOMPARE(f.rect(f.text("atlas")).topLeft() - card.topLeft(), QPointF(18, 18 + 38 + 20));
        QCOMPARE(f.rect(f.text("最近更新 刚刚")).top() - f.rect(f.text("atlas")).bottom(), 6.0);
        QCOMPARE(card.right() - f.rect(f.text("1 个任务")).right(), 18.0);
    }

    void theWindowHasThePaletteOfItsAppearance_data() {
        QTest::addColumn<bool>("dark");
        QTest::addColumn<QString>("colors");
        // Canvas, sidebar, picker's well, badge of a project, detail panel, selected project row,
        // project card: what the palette's components come to in 8 bits.
        QTest::newRow("light") << false
                               << "#f1f6f8 #f7fafb #e6edf0 #e6edf0 #f7fafb #2961e8 #f7fafb";
        QTest::newRow("dark") << true << "#131b1f #1a2429 #0e1417 #0e1417 #1a2429 #2961e8 #1a2429";
    }
    void theWindowHasThePaletteOfItsAppearance() {
        QFETCH(const bool, dark);
        ShellFixture f(twoProjects(), {{"appearanceMode", dark ? "light" : "dark"}});
        // Every surface follows while the window is open.
        f.defaults.setValue("appearanceMode", dark ? "dark" : "light");
        f.settle();
        const auto colorOf = [&](const QQuickItem *item, double x, double y) {
            const QPointF point = f.rect(item).topLeft() + QPointF(x, y);
            return f.pixel(int(point.x()), int(point.y())).name();
        };
        const QQuickItem *picker = f.item("AppearancePicker");
        QStringList colors{
            colorOf(f.item("ThreadIndexView"), 5, 890), colorOf(f.item("SidebarView"), 5, 600),
            colorOf(picker, picker->width() / 2, 16),   colorOf(f.items("ProjectRow")[0], 10, 20),
            colorOf(f.item("DetailPanelView"), 10, 10), colorOf(f.item("AllProjectsRow"), 100, 4)};
        f.workspace.toggleMode();
        f.settle();
        colors.append(colorOf(f.items("FocusProjectCard")[0], 140, 40));
        QTEST(colors.join(u' '), "colors");
    }

    void longTextsAreCut() {
        const std::string title = repeated("修复 very ", 600);
        const std::string name = repeated("Ab", 150);
        ShellFixture f({{.id = repeated("x", 300), .cwd = "/" + name, .title = title}});
        f.model.setSelectedThreadID(repeated("x", 300));
        f.settle();
        const QQuickItem *shownTitle = f.items("SoftParagraph")[0];
        QCOMPARE(shownTitle->property("lineCount"), 7);
        QVERIFY(shownTitle->property("truncated").toBool());
        QVERIFY(f.text(QString::fromStdString(name))->property("truncated").toBool());
        const QQuickItem *row = f.item("TaskRowView");
        for (const QQuickItem *text : f.items("SoftText")) {
            if (row->isAncestorOf(text)) {
                QVERIFY(f.rect(row).contains(f.rect(text)));
            }
        }
        // Nine properties; the directory and the id may have three lines, any other two.
        QStringList lines;
        for (const QQuickItem *property : f.items("PropertyRow")) {
            for (const QQuickItem *value : property->childItems()) {
                if (value->inherits("QQuickTextEdit")) {
                    lines.append(value->property("lineCount").toString());
                }
            }
        }
        QCOMPARE(lines.join(u' '), "2 1 1 1 1 1 1 3 3");
        f.workspace.toggleMode();
        f.settle();
        QCOMPARE(f.text(QString::fromStdString(name))->property("lineCount"), 2);
        QVERIFY(f.text(QString::fromStdString(name))->property("truncated").toBool());
    }

    void theSidebarListsTwelveProjects() {
        std::vector<Sample> samples;
        for (int i = 0; i < 15; ++i) {
            samples.push_back({.id = std::to_string(i), .cwd = "/p" + std::to_string(i)});
        }
        ShellFixture f(samples);
        QCOMPARE(f.items("ProjectRow").size(), 12);
        f.click(f.items("ProjectRow")[1]);
        QCOMPARE(f.model.selectedProject().value_or(""), f.model.projects()[1].name);
        f.click(f.items("ProjectRow")[1]);
        QVERIFY(!f.model.selectedProject());
    }
};

QTEST_MAIN(WindowLookTest)
#include "WindowLookTest.moc"
