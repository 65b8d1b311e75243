#include "core/ThreadRunStateResolver.h"

#include "core/RolloutEvent.h"
#include "core/RolloutFile.h"
#include "core/UnicodeText.h"

#include <algorithm>
#include <optional>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

namespace tallyview {

namespace {

using Lines = std::vector<std::string_view>;

/// The lines of `text` that are not empty. A line feed behind a carriage return does not end a
/// line: the two are one character.
Lines splitLines(std::string_view text) {
    Lines lines;
    std::size_t begin = 0;
    for (std::size_t end = 0; end <= text.size(); ++end) {
        end = std::min(text.find('\n', end), text.size());
        if (end < text.size() && end > 0 && text[end - 1] == '\r') {
            continue;
        }
        if (end > begin) {
            lines.push_back(text.substr(begin, end - begin));
        }
        begin = end + 1;
    }
    return lines;
}

std::optional<ThreadRunState> latestState(RolloutEventParser &parser,
                                          std::span<const std::string_view> lines) {
    for (; !lines.empty(); lines = lines.first(lines.size() - 1)) {
        if (const auto state = parser.decidedState(lines.back())) {
            return state;
        }
    }
    return std::nullopt;
}

/// One walk from the end of a file to its start, piece by piece.
class BackwardReading {
public:
    BackwardReading(const RolloutFile &file, std::size_t size, std::size_t chunkSize)
        : m_file(file)
        , m_offset(size)
        , m_chunkSize(chunkSize) {}

    bool atStart() const { return m_offset == 0; }

    /// Takes the next earlier piece in and answers what its lines decide; `completed` when it
    /// cannot be read.
    std::optional<ThreadRunState> step();

private:
    std::optional<ThreadRunState> examine(std::string buffer);

    const RolloutFile &m_file;
    std::size_t m_offset;
    std::size_t m_chunkSize;
    /// What waits for the piece before it: the first line, of which more may stand there, or
    /// everything when the piece began inside a character.
    std::string m_carry;
    RolloutEventParser m_parser;
};

std::optional<ThreadRunState> BackwardReading::step() {
    const std::size_t length = std::min(m_offset, m_chunkSize);
    m_offset -= length;
    std::optional<std::string> buffer = m_file.read(m_offset, length);
    if (!buffer || buffer->empty()) {
        return ThreadRunState::completed;
    }
    *buffer += m_carry;
    if (!isValidUtf8(*buffer)) {
        m_carry = *std::move(buffer);
        return std::nullopt;
    }
    return examine(*std::move(buffer));
}

std::optional<ThreadRunState> BackwardReading::examine(std::string buffer) {
    const std::size_t size = buffer.size();
    buffer.append(RolloutEventParser::padding, ' ');
    const Lines lines = splitLines(std::string_view(buffer).substr(0, size));
    const std::size_t held = m_offset > 0 && !lines.empty() ? 1 : 0;
    m_carry = held > 0 ? std::string(lines.front()) : std::string();
    return latestState(m_parser, std::span(lines).subspan(held));
}

} // namespace

ThreadRunState ThreadRunStateResolver::resolve(const std::string &rolloutPath,
                                               bool archived) const {
    if (archived || rolloutPath.empty()) {
        return ThreadRunState::completed;
    }
    const RolloutFile file(rolloutPath);
    const std::optional<std::size_t> size = file.size();
    if (!size) {
        return ThreadRunState::completed;
    }
    BackwardReading reading(file, *size, m_chunkSize);
    while (!reading.atStart()) {
        if (const auto state = reading.step()) {
            return *state;
        }
    }
    return ThreadRunState::completed;
}

} // namespace tallyview
