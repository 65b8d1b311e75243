#include "core/ThreadRunStateResolver.h"

#include "core/RolloutFile.h"
#include "core/UnicodeText.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <optional>
#include <ranges>
#include <string_view>
#include <utility>
#include <vector>

namespace tallyview {

namespace {

constexpr std::size_t longestCharacter = 4;

/// Room after a piece for the rest of a character and the parser's padding.
constexpr std::size_t spareBytes = longestCharacter + RolloutEventParser::padding;

/// Up to `length` bytes from `offset` on into `bytes`; false when there are none.
bool readPiece(const RolloutFile &file, std::size_t offset, std::size_t length,
               std::string &bytes) {
    bytes.reserve(length + spareBytes);
    bytes.resize_and_overwrite(length, [&](char *begin, std::size_t size) {
        return file.read(offset, {begin, size}).value_or(0);
    });
    return !bytes.empty();
}

/// Takes lines off the end of a text.
///
/// A line feed after a carriage return does not end a line: the two are one character.
class Lines {
public:
    /// Line feeds at the start are skipped: they only make empty lines. The parser's padding
    /// follows `text`.
    explicit Lines(std::string_view text)
        : m_text(text.substr(std::min(text.find_first_not_of('\n'), text.size()))) {}

    /// Removes and returns what follows the last line end; nothing when none is left.
    std::optional<std::string_view> takeLast() {
        for (std::size_t end = m_text.size(); end > 0;) {
            const void *const found = memrchr(m_text.data(), '\n', end);
            if (found == nullptr) {
                break;
            }
            end = static_cast<std::size_t>(static_cast<const char *>(found) - m_text.data());
            if (m_text[end - 1] != '\r') {
                const std::string_view line = m_text.substr(end + 1);
                m_text = m_text.substr(0, end);
                return line;
            }
        }
        return std::nullopt;
    }

    /// What is left; empty only if the text was nothing but line feeds.
    std::string_view first() const { return m_text; }

private:
    std::string_view m_text;
};

/// The consecutive parts of a text, collected from the last to the first.
class ReversedText {
public:
    bool empty() const { return m_parts.empty(); }

    void prepend(std::string part) { m_parts.push_back(std::move(part)); }

    /// `beginning` followed by all parts, with the parser's padding reserved; keeps none of them.
    std::string takeBehind(std::string_view beginning) {
        std::size_t size = beginning.size();
        for (const std::string &part : m_parts) {
            size += part.size();
        }
        std::string text;
        text.reserve(size + spareBytes);
        text = beginning;
        for (const std::string &part : m_parts | std::views::reverse) {
            text += part;
        }
        m_parts.clear();
        return text;
    }

private:
    std::vector<std::string> m_parts;
};

/// One walk from the end of a file to its start, piece by piece.
///
/// Answers as the plain method would, which decodes each piece together with everything held back
/// behind it, and holds all of it back again while it does not decode. Here each byte is decoded,
/// searched and joined only once:
///
/// - What is held back is the first line of a text that decoded, or bytes that did not. Text that
///   decodes in front of decoded text decodes alone, so a held-back line need not be decoded again,
///   nor searched: it contains no line end and does not begin with a line feed.
/// - Bytes that did not decode will do so with an earlier piece only if all they lack is the start
///   of a character: up to three continuation bytes, then valid text. The continuation bytes move
///   to the end of the earlier piece, where they are decoded; what follows them is known to be
///   valid. Anything else never decodes, which means `completed`.
class BackwardReading {
public:
    BackwardReading(RolloutMemory &memory, const RolloutFile &file, std::size_t size,
                    std::size_t chunkSize)
        : m_parser(memory.parser)
        , m_piece(memory.bytes)
        , m_file(file)
        , m_offset(size)
        , m_chunkSize(chunkSize) {}

    ThreadRunState result();

private:
    /// Reads the next earlier piece and answers what its lines decide; `completed` when the piece
    /// cannot be read or will never decode.
    std::optional<ThreadRunState> step();
    std::optional<ThreadRunState> examine(std::string_view text);
    void holdBack(std::string_view line);
    /// By `line` and what is held back of it, joined.
    std::optional<ThreadRunState> decidedState(std::string_view line);

    RolloutEventParser &m_parser;
    std::string &m_piece;
    const RolloutFile &m_file;
    std::size_t m_offset;
    std::size_t m_chunkSize;
    /// Continuation bytes of a character that begins in the next earlier piece.
    std::string m_cutCharacter;
    /// Valid text after `m_cutCharacter` whose lines have not been searched.
    ReversedText m_undecoded;
    /// What has been read of the line whose start has not.
    ReversedText m_openLine;
    /// The open line cannot be JSON, whatever it starts with; none of it is held back.
    bool m_isHopeless = false;
};

ThreadRunState BackwardReading::result() {
    while (m_offset > 0) {
        if (const auto state = step()) {
            return *state;
        }
    }
    return ThreadRunState::completed;
}

std::optional<ThreadRunState> BackwardReading::step() {
    const std::size_t length = std::min(m_offset, m_chunkSize);
    m_offset -= length;
    if (!readPiece(m_file, m_offset, length, m_piece)) {
        return ThreadRunState::completed;
    }
    m_piece += m_cutCharacter;
    const auto isContinuation = [](char byte) {
        return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
    };
    const auto cut = static_cast<std::size_t>(std::ranges::find_if_not(m_piece, isContinuation) -
                                              m_piece.begin());
    const auto text = std::string_view(m_piece).substr(cut);
    if (cut >= longestCharacter || !isValidUtf8(text)) {
        return ThreadRunState::completed;
    }
    m_cutCharacter = m_piece.substr(0, cut);
    if (cut > 0) {
        m_undecoded.prepend(std::string(text));
        return std::nullopt;
    }
    return m_undecoded.empty() ? examine(text) : examine(m_undecoded.takeBehind(text));
}

std::optional<ThreadRunState> BackwardReading::examine(std::string_view text) {
    Lines lines(text);
    while (const auto line = lines.takeLast()) {
        if (const auto state = decidedState(*line)) {
            return state;
        }
    }
    if (m_offset == 0) {
        return decidedState(lines.first());
    }
    holdBack(lines.first());
    return std::nullopt;
}

// JSON never contains a NUL. Unwritten gaps in a file read as NULs: a line of gigabytes that is not
// worth the memory.
void BackwardReading::holdBack(std::string_view line) {
    m_isHopeless = m_isHopeless || line.contains('\0');
    if (m_isHopeless) {
        m_openLine = {};
    } else {
        m_openLine.prepend(std::string(line));
    }
}

std::optional<ThreadRunState> BackwardReading::decidedState(std::string_view line) {
    if (std::exchange(m_isHopeless, false)) {
        return std::nullopt;
    }
    return m_openLine.empty() ? m_parser.decidedState(line)
                              : m_parser.decidedState(m_openLine.takeBehind(line));
}

/// What the last `length` bytes of the file decide on their own: what the last deciding line says
/// of those after their first. If it completes a task, the answer for the file is `completed`.
/// Proof, for bytes that lie within the last piece of the file:
///
/// - Such a line is a whole line of any decoded text that ends in these bytes: it follows a line
///   feed that is not half of a CR LF, and before that line feed is a byte other than a line feed,
///   so it is not the text's first line either, the only one that would be held back. Nothing is
///   joined to it, because nothing is held back behind the last piece.
/// - So the search of the first text that decodes starts with these lines, from the last to the
///   first, and finds their answer. If no text ever decodes, the answer is `completed` too.
///
/// Lines that are cut, torn or not UTF-8 make no difference: the first one is left out, the others
/// decide nothing however they are read. A task that started settles nothing, because the bytes
/// before it may keep any text from decoding.
std::optional<ThreadRunState> tailState(RolloutMemory &memory, const RolloutFile &file,
                                        std::size_t size, std::size_t length) {
    readPiece(file, size - length, length, memory.bytes);
    Lines lines(memory.bytes);
    while (const auto line = lines.takeLast()) {
        if (const auto state = memory.parser.decidedState(*line)) {
            return state;
        }
    }
    return std::nullopt;
}

/// Whether a look at the end of the file settles it as `completed`.
bool endsCompleted(RolloutMemory &memory, const RolloutFile &file, std::size_t size,
                   std::size_t chunkSize) {
    // Of 512 KiB, 4 KiB hold the end of nearly every task, 32 KiB that of one with a long report.
    for (const std::size_t tailsPerPiece : {128U, 16U}) {
        const std::size_t length = std::min(size, chunkSize / tailsPerPiece);
        if (const auto state = tailState(memory, file, size, length)) {
            return state == ThreadRunState::completed;
        }
        if (length == size) {
            break;
        }
    }
    return false;
}

} // namespace

ThreadRunState ThreadRunStateResolver::resolve(const std::string &rolloutPath,
                                               bool archived) const {
    RolloutMemory memory;
    return resolve(rolloutPath, archived, memory);
}

ThreadRunState ThreadRunStateResolver::resolve(const std::string &rolloutPath, bool archived,
                                               RolloutMemory &memory) const {
    if (archived || rolloutPath.empty()) {
        return ThreadRunState::completed;
    }
    const RolloutFile file(rolloutPath);
    const std::optional<std::size_t> size = file.size();
    try {
        // Anything but a regular file counts as completed, so whether it is one is worth a system
        // call only if its end has not settled that.
        if (!size || endsCompleted(memory, file, *size, m_chunkSize) || !file.isRegular()) {
            return ThreadRunState::completed;
        }
        return BackwardReading(memory, file, *size, m_chunkSize).result();
    } catch (const std::bad_alloc &) {
        // A file with a line too large for the memory counts as unreadable.
        return ThreadRunState::completed;
    }
}

} // namespace tallyview
