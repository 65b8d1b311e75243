#pragma once

#include "app/presentation/ThreadDetail.h"
#include "app/terminal/Paint.h"

#include <string>
#include <vector>

namespace tallyview {

/// One thread in lines of at most `columns`, ten at least: title, state, properties and preview.
/// Each line that a text goes on in is indented, so that none passes for another property.
std::vector<std::string> sheetLines(const ThreadDetail &detail, std::size_t columns, Paint paint);

} // namespace tallyview
