#include "tests/shell/ShellFixture.h"

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

/// Where the visible items of a type stand below the menu bar.
QString inContent(const ShellFixture &f, const QString &type) {
    const QPointF origin = f.rect(f.item("ContentView")).topLeft();
    QStringList places;
    for (const QQuickItem *item : f.items(type)) {
        const QRectF area = f.rect(item).translated(-origin);
        places.append(QStringLiteral("%1 %2 %3 %4")
                          .arg(area.x())
                          .arg(area.y())
                          .arg(area.width())
                          .arg(area.height()));
    }
    return places.join(QStringLiteral(", "));
}

const char *const sidebarHeaderLook = R"(
surface 31.5x31.5 radius 7.3125 circular accent shadow softShadowDark 4 2 3
text "Orvik" 19 700 system primaryInk
text "本地任务看板" 10 500 system secondaryInk
symbol %1 13 600 secondaryInk
surface 34x34 radius 9 raisedSurface rim hairline shadow softShadowDark 3 2 2 shadow softShadowLight 3 -2 -2)";

const char *const sidebarFooterLook = R"(
surface 142x40 radius 10 insetSurface
surface 42x32 radius 8 circular %1
symbol sun.max 12 500 %2
surface 42x32 radius 8 circular %3
symbol moon 12 500 %4
surface 42x32 radius 8 circular clear
symbol display 12 500 secondaryInk
symbol cylinder 13 400 secondaryInk
surface 7x7 radius 3.5 circular running
text "SQLite · 本机只读" 9 600 system primaryInk
text "不会回写 Orvik" 8 400 system mutedInk)";

const char *const navigationLook = R"(
text "项目" 11 600 system secondaryInk
symbol square.grid.2x2 14 600 primaryInk
text "全部项目" 12 600 system primaryInk
text "5" 9 500 system primaryInk
surface 196x42 radius 9 clear
surface 24x24 radius 6 circular insetSurface
symbol star 11 600 primaryInk
text "24H" 10 700 monospaced primaryInk
text "今天更新" 10 400 system secondaryInk
text "2" 9 400 system secondaryInk
surface 196x36 radius 8 circular clear
surface 24x24 radius 6 circular insetSurface
symbol star.fill 11 600 primaryInk
text "PIN" 10 700 monospaced primaryInk
text "已固定" 10 400 system secondaryInk
text "1" 9 400 system secondaryInk
surface 196x36 radius 8 circular insetSurface
surface 24x24 radius 6 circular insetSurface
symbol star 11 600 primaryInk
text "ARC" 10 700 monospaced primaryInk
text "已归档" 10 400 system secondaryInk
text "3" 9 400 system secondaryInk
surface 196x36 radius 8 circular clear
surface 30x30 radius 7 insetSurface
text "BEA" 9 700 monospaced primaryInk lines 1
text "Beacon" 11.5 400 rounded primaryInk lines 1
text "4" 9 400 monospaced secondaryInk
surface 196x40 radius 8 circular clear
surface 30x30 radius 7 accent@0.16
text "ATL" 9 700 monospaced accent lines 1
text "atlas" 11.5 600 rounded primaryInk lines 1
text "1" 9 400 monospaced secondaryInk
surface 196x40 radius 8 circular accent@0.09)";

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
surface 7x7 radius 3.5 circular running
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
surface 15x15 radius 7.5 circular raisedSurface rim rimLight
surface 7x7 radius 3.5 circular running
text "刚刚" 11 600 rounded secondaryInk
text "1" 8 500 monospaced mutedInk
surface 788x58 radius 11 liftedSurface rim 1.5 accent@0.72 shadow softShadowDark 6 3 3 shadow softShadowLight 4 -2 -2
surface 34x34 radius 17 circular running@0.1 rim running@0.2
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
text "5" 16 700 monospaced primaryInk
text "全部" 9 500 rounded mutedInk
surface 275x190 radius 16 raisedSurface rim hairline shadow softShadowDark@0.48 5 5 6 shadow softShadowLight 6 -4 -4
surface 38x38 radius 10 accent@0.11
text "ATL" 10 700 system accent
surface 32x32 radius 9 circular insetSurface@0.7
symbol arrow.up.right 11 600 secondaryInk
text "atlas" 16 700 system primaryInk lines 2
text "最近更新 刚刚" 9 400 system mutedInk lines 1
surface 6x6 radius 3 circular running
text "1 进行中" 9 500 system secondaryInk
surface 6x6 radius 3 circular secondaryInk
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
        QVERIFY(f.matches(looks("FocusProjectGridView").section('\n', 0, 20), gridLook));
    }

    void everyPieceStandsInItsPlace() {
        std::vector<Sample> samples = twoProjects();
        samples.push_back({.id = "f", .age = 7200, .title = "Earlier"});
        ShellFixture f(samples);
        f.model.setSelectedThreadID("019a3");
        f.settle();
        const std::pair<const char *, const char *> places[] = {
            {"ContentView", "0 0 1440 900"},
            {"SidebarView", "0 0 224 900"},
            {"SidebarResizeHandle", "224 0 8 900"},
            {"DetailPanelView", "1100 0 340 900"},
            {"BrandHeader", "17 0 190 78"},
            {"OrvikIconView", "17 21 36 36"},
            {"AllProjectsRow", "14 116 196 42"},
            {"QuickRow", "14 162 196 36, 14 202 196 36, 14 242 196 36"},
            {"ProjectRow", "14 303 196 40, 14 347 196 40"},
            {"AppearancePicker", "0 780 224 68"},
            {"StatusFooter", "0 848 224 52"},
            {"ThreadIndexView", "232 0 867 900"},
            {"ThreadIndexHeader", "232 0 867 164"},
            {"StatusControl", "256 62 310 44"},
            {"SearchField", "580 63 495 42"},
            {"TimeGroupHeader", "256 164 819 38, 256 274 819 38"},
            {"TaskRowView", "287 202 788 58, 287 312 788 58"},
            {"TaskStatusMark", "298 214 34 34, 298 324 34 34"},
            {"SoftIconButton", "173 22 34 34, 1045 20 30 30, 1346 16 30 30, 1384 16 30 30"},
            {"DetailToolbar", "1126 16 288 30"},
        };
        for (const auto &[type, place] : places) {
            QCOMPARE(inContent(f, type), place);
        }
        QCOMPARE(f.rect(f.text("Orvik")).left(), 64.0);
        QCOMPARE(f.rect(f.text("atlas")).left(), 60.0);

        const auto rows = f.items("PropertyRow");
        std::vector<const QQuickItem *> pieces{
            f.item("DetailToolbar"), f.item("StatusPill"), f.items("SoftParagraph")[0],
            f.items("SoftParagraph")[1], f.item("ContinueButton")};
        pieces.insert(pieces.end(), rows.begin(), rows.end());
        pieces.push_back(f.item("InfoBox"));
        QStringList gaps;
        for (std::size_t i = 1; i < pieces.size(); ++i) {
            gaps.append(QString::number(f.rect(pieces[i]).top() - f.rect(pieces[i - 1]).bottom() +
                                        pieces[i]->property("topPadding").toDouble()));
        }
        QCOMPARE(gaps.join(u' '), "26 18 14 24 49 16 16 16 16 16 16 16 16 26");

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
        const QRectF card = f.rect(f.item("FocusProjectCard"));
        QCOMPARE(card.top(), f.rect(f.item("FocusGridHeader")).bottom());
        QCOMPARE(f.rect(f.text("atlas")).topLeft() - card.topLeft(), QPointF(18, 18 + 38 + 20));
        QCOMPARE(f.rect(f.text("最近更新 刚刚")).top() - f.rect(f.text("atlas")).bottom(), 6.0);
        QCOMPARE(card.right() - f.rect(f.text("2 个任务")).right(), 18.0);
    }

    void everySurfaceFollowsTheAppearance() {
        ShellFixture f(twoProjects());
        const auto colorOf = [&](const QQuickItem *item, double x, double y) {
            const QPointF point = f.rect(item).topLeft() + QPointF(x, y);
            return f.pixel(int(point.x()), int(point.y())).name();
        };
        // Canvas, sidebar, picker's well, badge of a project, detail panel, selected project row,
        // project card: what the palette's components come to in 8 bits.
        for (const auto &[appearance, wanted] :
             {std::pair("dark", "#131b1f #1a2429 #0e1417 #0e1417 #1a2429 #2961e8 #1a2429"),
              std::pair("light", "#f1f6f8 #f7fafb #e6edf0 #e6edf0 #f7fafb #2961e8 #f7fafb")}) {
            f.defaults.setValue("appearanceMode", appearance);
            f.settle();
            const QQuickItem *picker = f.item("AppearancePicker");
            QStringList colors{colorOf(f.item("ThreadIndexView"), 5, 890),
                               colorOf(f.item("SidebarView"), 5, 600),
                               colorOf(picker, picker->width() / 2, 16),
                               colorOf(f.item("ProjectRow"), 10, 20),
                               colorOf(f.item("DetailPanelView"), 10, 10),
                               colorOf(f.item("AllProjectsRow"), 100, 4)};
            f.workspace.toggleMode();
            f.settle();
            colors.append(colorOf(f.item("FocusProjectCard"), 140, 40));
            QCOMPARE(colors.join(u' '), wanted);
            f.workspace.toggleMode();
            f.settle();
        }
    }

    void anAppearanceComesAllAtOnce() {
        ShellFixture f(twoProjects(), {}, true);
        f.defaults.setValue("appearanceMode", "dark");
        // A colour without a role is on its way from light.
        const QString looks = f.looks(f.item("ThreadIndexView"), true);
        QVERIFY2(!looks.contains('#'), qPrintable(looks));
    }

    void longTextsAreCut() {
        const QString name = QString("Ab").repeated(150);
        const std::string id(300, 'x');
        ShellFixture f({{.id = id,
                         .cwd = "/" + name.toStdString(),
                         .title = QString("修复 very ").repeated(600).toStdString()}});
        f.model.setSelectedThreadID(id);
        f.settle();
        const QQuickItem *shownTitle = f.items("SoftParagraph")[0];
        QCOMPARE(shownTitle->property("lineCount"), 7);
        QVERIFY(shownTitle->property("truncated").toBool());
        QVERIFY(f.text(name)->property("truncated").toBool());
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
        QCOMPARE(f.text(name)->property("lineCount"), 2);
        QVERIFY(f.text(name)->property("truncated").toBool());
    }
};

QTEST_MAIN(WindowLookTest)
#include "WindowLookTest.moc"
