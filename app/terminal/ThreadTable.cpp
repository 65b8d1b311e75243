#include "app/terminal/ThreadTable.h"

#include "app/presentation/ThreadFormatting.h"
#include "app/presentation/ThreadRows.h"
#include "app/terminal/DisplayWidth.h"
#include "app/terminal/TerminalText.h"

#include <algorithm>
#include <array>

namespace tallyview {

namespace {

constexpr std::size_t narrowestTitle = 24;
constexpr std::size_t gap = 2;

/// In the order in which they stand, the title after them.
enum Column { state, id, age, project, columnCount };
/// Those that may go, the first one first.
constexpr std::array dispensable{project, age, id, state};

/// Leaves the title its room; far from any screen's width it is no bound.
std::size_t widestProject(std::size_t columns) { return std::max<std::size_t>(24, columns / 5); }

struct Row {
    std::array<std::string, columnCount> cells;
    std::string title;
    bool isRunning;
};

struct Block {
    std::string title;
    std::string count;
    std::vector<Row> rows;
};

Row rowOf(const ThreadRecord &thread, Instant now, const UtcOffset &utcOffset, const ShortIDs &ids,
          std::size_t columns) {
    const ThreadRunState runState = stateOf(thread);
    return {.cells = {std::string(title(runState)), terminalText(ids.of(thread.id())),
                      terminalText(ThreadFormatting::relative(thread->updatedAt, now, utcOffset)),
                      cutTo(terminalText(thread->project), widestProject(columns))},
            .title = terminalText(thread->title),
            .isRunning = runState == ThreadRunState::running};
}

std::vector<Block> blocksOf(const Listing &listing, const ShortIDs &ids, const UtcOffset &utcOffset,
                            std::size_t limit, std::size_t columns) {
    std::vector<Block> blocks;
    for (const ThreadTimeGroup &group : listing.groups) {
        if (limit == 0) {
            break;
        }
        const TimeGroupRow heading = timeGroupRow(group);
        Block block{
            .title = terminalText(heading.title), .count = terminalText(heading.count), .rows = {}};
        for (const ThreadRecord &thread : group.threads) {
            if (limit == 0) {
                break;
            }
            --limit;
            block.rows.push_back(rowOf(thread, listing.evaluatedAt, utcOffset, ids, columns));
        }
        blocks.push_back(std::move(block));
    }
    return blocks;
}

using Widths = std::array<std::size_t, columnCount>;

/// What the mark and the columns before the title take, each with the gap behind it.
std::size_t widthBeforeTitle(const Widths &widths) {
    std::size_t total = gap;
    for (const std::size_t width : widths) {
        total += width > 0 ? width + gap : 0;
    }
    return total;
}

/// Of each column; 0 for one that is left out.
Widths widthsFor(const std::vector<Block> &blocks, std::size_t columns) {
    Widths widths{};
    for (const Block &block : blocks) {
        for (const Row &row : block.rows) {
            for (std::size_t column = 0; column < columnCount; ++column) {
                widths[column] = std::max(widths[column], displayWidth(row.cells[column]));
            }
        }
    }
    for (const Column column : dispensable) {
        if (widthBeforeTitle(widths) + narrowestTitle <= columns) {
            break;
        }
        widths[column] = 0;
    }
    return widths;
}

std::string lineOf(const Row &row, const Widths &widths, const TableStyle &style) {
    std::string mark = row.isRunning ? "● " : "○ ";
    if (widths[state] > 0) {
        mark += paddedTo(row.cells[state], widths[state] + gap);
    }
    std::string beforeTitle;
    for (std::size_t column = id; column < columnCount; ++column) {
        if (widths[column] > 0) {
            beforeTitle += paddedTo(row.cells[column], widths[column] + gap);
        }
    }
    return style.paint(mark, row.isRunning ? Tone::running : Tone::faint) +
           style.paint(beforeTitle, Tone::faint) +
           cutTo(row.title, style.columns - widthBeforeTitle(widths));
}

} // namespace

std::vector<std::string> tableLines(const Listing &listing, const ShortIDs &ids,
                                    const UtcOffset &utcOffset, std::size_t limit,
                                    const TableStyle &style) {
    const std::vector<Block> blocks = blocksOf(listing, ids, utcOffset, limit, style.columns);
    const Widths widths = widthsFor(blocks, style.columns);
    std::vector<std::string> lines;
    for (const Block &block : blocks) {
        if (!lines.empty()) {
            lines.emplace_back();
        }
        const std::string heading = cutTo(block.title + "  " + block.count, style.columns);
        lines.push_back(style.paint(heading, Tone::strong));
        for (const Row &row : block.rows) {
            lines.push_back(lineOf(row, widths, style));
        }
    }
    return lines;
}

} // namespace tallyview
