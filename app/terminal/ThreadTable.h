#pragma once

#include "app/terminal/Listing.h"
#include "app/terminal/Paint.h"
#include "app/terminal/ShortIDs.h"

#include <string>
#include <vector>

namespace tallyview {

/// What a table of threads has to fit in, and how it looks.
struct TableStyle {
    std::size_t columns; ///< ten at least
    Paint paint;
};

/// The threads of a listing in lines, each group below its heading: state, id, age, project and
/// title, the last of which takes what the others leave. Where that is little, project, age, id and
/// the word for the state go, in this order. No more than `limit` threads.
std::vector<std::string> tableLines(const Listing &listing, const ShortIDs &ids,
                                    const UtcOffset &utcOffset, std::size_t limit,
                                    const TableStyle &style);

} // namespace tallyview
