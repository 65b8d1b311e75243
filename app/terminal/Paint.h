#pragma once

#include <string>
#include <string_view>

namespace tallyview {

/// How a text is to stand out.
enum class Tone { plain, strong, running, faint };

/// Dresses texts in the terminal's own colours, where there are to be any.
struct Paint {
    bool isColored = false;

    std::string operator()(std::string_view text, Tone tone) const;
};

} // namespace tallyview
