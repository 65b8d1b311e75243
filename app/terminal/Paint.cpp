#include "app/terminal/Paint.h"

namespace tallyview {

namespace {

std::string_view sequence(Tone tone) {
    switch (tone) {
    case Tone::strong:
        return "\033[1m";
    case Tone::running:
        return "\033[32m";
    case Tone::faint:
        return "\033[2m";
    case Tone::plain:
        break;
    }
    return {};
}

} // namespace

std::string Paint::operator()(std::string_view text, Tone tone) const {
    if (!isColored || tone == Tone::plain || text.empty()) {
        return std::string(text);
    }
    return std::string(sequence(tone)).append(text).append("\033[0m");
}

} // namespace tallyview
