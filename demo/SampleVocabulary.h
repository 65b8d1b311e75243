#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

/// The words that sample threads are made of. Everything here is invented.
namespace tallyview::demo {

using Words = std::span<const std::string_view>;

/// The parts of one language's titles and previews. The English ones are plain ASCII.
struct Phrases {
    Words actions;   ///< "Fix "
    Words subjects;  ///< "the retry loop of the uploader"
    Words addenda;   ///< " on slow networks", often empty
    Words openings;  ///< sentences of a preview that may come first
    Words sentences; ///< sentences that may follow
    std::string_view sentenceGap;
};

const Phrases &englishPhrases();
const Phrases &chinesePhrases();

/// One working directory. An absent path is NULL in the database; an empty one stands for the
/// sample home itself.
struct SampleProject {
    std::optional<std::string_view> path;
    unsigned weight; ///< share of the threads
    bool isChinese;  ///< whether most of its threads are described in Chinese
};

std::span<const SampleProject> sampleProjects();

/// Texts that a careless reader, sanitizer or view gets wrong: secrets, markup, blanks, other
/// scripts, very long ones. An absent text is NULL in the database.
struct TrickyText {
    std::optional<std::string> title;
    std::optional<std::string> preview;
};

std::span<const TrickyText> trickyTexts();

} // namespace tallyview::demo
