#include "app/terminal/ThreadSheet.h"

#include "app/terminal/DisplayWidth.h"
#include "app/terminal/TerminalText.h"

#include <QStringList>

#include <algorithm>

namespace tallyview {

namespace {

constexpr std::size_t indent = 2;
constexpr std::size_t narrowestValue = 8;

/// Adds `text` behind `label`, which is padded to `labelColumns`, and its further lines below it;
/// where that leaves little room, all of it below the label.
void addWrapped(std::vector<std::string> &lines, const std::string &label, std::size_t labelColumns,
                std::string_view text, std::size_t columns) {
    std::string start = paddedTo(label, labelColumns);
    if (columns < labelColumns + narrowestValue) {
        lines.push_back(cutTo(label, columns));
        labelColumns = indent;
        start.assign(indent, ' ');
    }
    for (const std::string_view piece : wrappedAt(text, columns - labelColumns)) {
        lines.push_back(start + std::string(piece));
        start.assign(labelColumns, ' ');
    }
}

/// The title, whose further lines are indented.
void addTitle(std::vector<std::string> &lines, std::string_view title, std::size_t columns,
              Paint paint) {
    const std::string_view first = wrappedAt(title, columns).front();
    lines.emplace_back(first);
    if (first.size() < title.size()) {
        addWrapped(lines, {}, indent, title.substr(first.size()), columns);
    }
    for (std::string &line : lines) {
        line = paint(line, Tone::strong);
    }
}

void addProperties(std::vector<std::string> &lines, const QList<DetailProperty> &properties,
                   std::size_t columns) {
    std::size_t widest = 0;
    for (const DetailProperty &property : properties) {
        widest = std::max(widest, displayWidth(terminalText(property.label)));
    }
    for (const DetailProperty &property : properties) {
        addWrapped(lines, terminalText(property.label), widest + indent,
                   terminalText(property.value), columns);
    }
}

} // namespace

std::vector<std::string> sheetLines(const ThreadDetail &detail, std::size_t columns, Paint paint) {
    std::vector<std::string> lines;
    addTitle(lines, terminalText(detail.title), columns, paint);
    const std::string state = (detail.active ? "● " : "○ ") + terminalText(detail.stateLabel) +
                              (detail.pinned ? "  ★  " : "  ") + terminalText(detail.badge);
    lines.push_back(paint(cutTo(state, columns), detail.active ? Tone::running : Tone::faint));
    lines.emplace_back();
    addProperties(lines, detail.properties, columns);
    lines.emplace_back();
    for (const QString &line : detail.preview.split(u'\n')) {
        addWrapped(lines, {}, indent, terminalText(line), columns);
    }
    return lines;
}

} // namespace tallyview
