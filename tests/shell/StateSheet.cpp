// Draws a sheet of every control in every state that it can have.
//
//   StateSheet light|dark|high-light|high-dark PNG
//
// The controls are those of the window over a few made-up threads, on the platform and with the
// renderer that the environment names.

#include "app/theme/SoftPalette.h"
#include "tests/shell/ShellFixture.h"

#include <QFontMetrics>
#include <QGuiApplication>
#include <QPainter>

#include <cstdlib>

using namespace tallyview;
using namespace tallyview::test;

namespace {

/// A line for each control: its name, then its pictures with their states below.
class Sheet {
public:
    explicit Sheet(const SoftPalette &palette) : m_ink(palette.secondaryInk) {
        m_image.fill(palette.canvas);
    }

    void add(const QString &control, const QString &state, const QImage &picture) {
        QPainter painter(&m_image);
        QFont font;
        font.setPixelSize(10);
        painter.setFont(font);
        painter.setPen(m_ink);
        const int width = qMax(picture.width(), QFontMetrics(font).horizontalAdvance(state));
        const bool isNew = control != std::exchange(m_control, control);
        if (isNew || m_x + width > m_image.width()) {
            m_x = indent;
            m_y = m_bottom;
        }
        if (isNew) {
            painter.drawText(gap, m_y + gap, control);
        }
        painter.drawImage(m_x, m_y, picture);
        painter.drawText(m_x, m_y + picture.height() + 11, state);
        m_x += width + gap;
        m_bottom = qMax(m_bottom, m_y + picture.height() + 2 * gap);
    }
    bool save(const QString &path) const {
        return m_image.copy(0, 0, m_image.width(), m_bottom).save(path);
    }

private:
    static constexpr int indent = 110;
    static constexpr int gap = 14;

    QImage m_image{1520, 6000, QImage::Format_RGB32};
    QColor m_ink;
    QString m_control;
    int m_x = 0;
    int m_y = 0;
    int m_bottom = gap;
};

std::vector<Sample> samples() {
    std::vector<Sample> result{
        {.id = "019a3f20", .title = "重构 search index 的读取"},
        {.id = "b", .age = 60, .running = false, .cwd = "/src/beacon", .title = "Fix the build"},
        {.id = "long",
         .age = 120,
         .cwd = "/src/" + std::string(40, 'm'),
         .title = QStringLiteral("一个很长的标题 and Latin ").repeated(12).toStdString()}};
    for (int i = 0; i < 30; ++i) {
        result.push_back({.id = "more" + std::to_string(i), .age = 200 + i});
    }
    return result;
}

class Studio : public ShellFixture {
public:
    Studio(const QString &mode, bool highContrast)
        : ShellFixture(samples(), {{"appearanceMode", mode}})
        , sheet(SoftPalette::of(appearance.dark(), highContrast)) {
        system.setHighContrast(highContrast);
        model.setStatusFilter(TaskStatusFilter::all);
        window->resize(1100, 900);
        hover(aside());
    }

    void sidebar();
    void header();
    void list();
    void detailsAndCards();
    void menus();

    Sheet sheet;

private:
    void shoot(const QString &control, const QString &state, const QRectF &area) {
        settle();
        const QRectF room = area.adjusted(-8, -8, 8, 8) & QRectF(QPoint(), window->size());
        sheet.add(control, state, window->grabWindow().copy(room.toAlignedRect()));
    }
    void shoot(const QString &control, const QString &state, const QQuickItem *item) {
        settle();
        shoot(control, state, rect(item));
    }
    /// At rest, hovered, pressed and with the keyboard's focus. `part` is what of an item takes
    /// these states, if it is not the item itself.
    void take(const QString &control, const QString &prefix, QQuickItem *item,
              QQuickItem *part = nullptr) {
        settle();
        QQuickItem *const target = part ? part : item;
        const QPoint center = rect(target).center().toPoint();
        shoot(control, prefix + "at rest", item);
        hover(center);
        shoot(control, prefix + "hovered", item);
        QTest::mousePress(window, Qt::LeftButton, {}, center);
        shoot(control, prefix + "pressed", item);
        hover(aside());
        QTest::mouseRelease(window, Qt::LeftButton, {}, aside());
        target->setFocus(false);
        target->forceActiveFocus(Qt::TabFocusReason);
        shoot(control, prefix + "focused", item);
        target->setFocus(false);
    }
    void hover(const QPoint &place) {
        QTest::mouseMove(window, place);
        settle();
    }
    /// Where nothing is hovered.
    QPoint aside() const { return {5, window->height() - 5}; }

    QQuickItem *within(const QQuickItem *item, const QString &type, int index = 0) const {
        QList<QQuickItem *> found = items(type);
        found.removeIf([item](QQuickItem *piece) { return !item->isAncestorOf(piece); });
        return found.value(index);
    }
};

void Studio::sidebar() {
    take("Mode button", "", button("切换到专注模式"));
    take("All projects", "selected, ", item("AllProjectsRow"));
    model.setProject("atlas");
    take("All projects", "", item("AllProjectsRow"));
    take("Project row", "", items("ProjectRow").at(1));
    take("Project row", "selected, ", items("ProjectRow").at(0));
    shoot("Project row", "long text", items("ProjectRow").at(2));
    take("Quick row", "", items("QuickRow").at(1));
    model.setPinnedOnly(true);
    take("Quick row", "chosen, ", items("QuickRow").at(1));
    const QQuickItem *const picker = item("AppearancePicker");
    take("Appearance", "", within(picker, "SoftChoice", 2));
    take("Appearance", "chosen, ", within(picker, "SoftChoice", appearance.dark() ? 1 : 0));
    QQuickItem *const edge = item("SidebarResizeHandle");
    const QRectF part(rect(edge).left() - 30, rect(edge).center().y(), 68, 40);
    shoot("Sidebar's edge", "at rest", part);
    hover(rect(edge).center().toPoint());
    shoot("Sidebar's edge", "hovered", part);
    hover(aside());
    edge->forceActiveFocus(Qt::TabFocusReason);
    shoot("Sidebar's edge", "focused", part);
    edge->setFocus(false);
}

void Studio::header() {
    take("Reset", "", found("QQuickAbstractButton", "text", "重置筛选"));
    model.clearFilters();
    model.setStatusFilter(TaskStatusFilter::all);
    settle();
    take("Refresh", "", button("刷新任务"));
    take("Status", "", within(item("StatusControl"), "SoftChoice", 1));
    take("Status", "chosen, ", within(item("StatusControl"), "SoftChoice", 2));
    take("Recency", "", items("RecencyCapsule").at(2));
    take("Recency", "chosen, ", items("RecencyCapsule").at(1));
    take("Search field", "", item("SearchField"), within(item("SearchField"), "QQuickTextInput"));
    model.setQuery("index");
    shoot("Search field", "with a text", item("SearchField"));
    model.setQuery("a query that is longer than the field");
    shoot("Search field", "long text", item("SearchField"));
    model.setQuery({});
    settle();
}

void Studio::list() {
    shoot("Section heading", "", QRectF(rect(item("TimeGroupHeader")).topLeft(), QSizeF(200, 38)));
    select("b");
    const QList<QQuickItem *> rows = items("TaskRowView");
    take("Task row", "running, ", rows[0], within(rows[0], "QQuickAbstractButton"));
    take("Task row", "completed, selected, ", rows[1], within(rows[1], "QQuickAbstractButton"));
    shoot("Task row", "long text", rows[2]);
    take("Its chevron", "", within(rows[0], "QQuickAbstractButton", 1));
    take("Its chevron", "selected, ", within(rows[1], "QQuickAbstractButton", 1));
    const QRectF scroller = rect(within(item("ThreadList"), "SlimScroller"));
    const QRectF part(scroller.topLeft() - QPointF(20, 0), QSizeF(30, 130));
    const QPoint grip = scroller.topLeft().toPoint() + QPoint(5, 20);
    shoot("Scroller", "at rest", part);
    hover(grip);
    shoot("Scroller", "hovered", part);
    QTest::mousePress(window, Qt::LeftButton, {}, grip);
    hover(grip + QPoint(0, 15));
    shoot("Scroller", "dragged", part);
    hover(grip);
    QTest::mouseRelease(window, Qt::LeftButton, {}, grip);
    hover(aside());
}

void Studio::detailsAndCards() {
    take("Pin", "", button("固定任务"));
    model.togglePin(thread("b"));
    settle();
    take("Pin", "pinned, ", button("取消固定"));
    shoot("Badge, pill", "completed", item("StatusPill"));
    select("019a3f20");
    shoot("Badge, pill", "running", item("StatusPill"));
    shoot("Badge, pill", "reference", item("DetailToolbar"));
    take("Continue", "", item("ContinueButton"));
    QQuickItem *const value = within(items("PropertyRow").at(0), "QQuickTextEdit");
    shoot("Property", "at rest", items("PropertyRow").at(0));
    QMetaObject::invokeMethod(value, "selectAll");
    shoot("Property", "selected", items("PropertyRow").at(0));
    QMetaObject::invokeMethod(value, "deselect");
    toggleMode();
    take("Project card", "", items("FocusProjectCard").at(0));
    shoot("Project card", "long text", items("FocusProjectCard").at(2));
    workspace.toggleMode();
}

void Studio::menus() {
    settle();
    take("Menu title", "", items("QQuickMenuBarItem").at(0));
    model.setSelectedThreadID({});
    settle();
    click(items("QQuickMenuBarItem").at(1));
    shoot("Menu", "at rest, the second disabled", item("QQuickPopupItem"));
    hover(rect(items("AppMenuItem").at(0)).center().toPoint());
    shoot("Menu", "hovered", item("QQuickPopupItem"));
    press(Qt::Key_Escape);
    hover(rect(items("ProjectRow").at(2)).center().toPoint());
    [[maybe_unused]] const bool shown = QTest::qWaitFor([this] { return item("QQuickPopupItem"); });
    shoot("Tool tip", "", item("QQuickPopupItem"));
}

} // namespace

int main(int argc, char **argv) {
    QQuickWindow::setTextRenderType(QQuickWindow::NativeTextRendering);
    const QGuiApplication application(argc, argv);
    const QStringList arguments = QGuiApplication::arguments();
    if (arguments.size() != 3) {
        return EXIT_FAILURE;
    }
    Studio studio(arguments[1].section('-', -1), arguments[1].startsWith("high-"));
    studio.sidebar();
    studio.header();
    studio.list();
    studio.detailsAndCards();
    studio.menus();
    return studio.sheet.save(arguments[2]) ? EXIT_SUCCESS : EXIT_FAILURE;
}
