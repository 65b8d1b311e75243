#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace tallyview {

/// Masking by ICU's matcher, which TextSanitizer::redact has to agree with. Slow, and quadratic
/// over runs of blanks; its stack is not limited. To be used from one thread.
class PlainSanitizer {
public:
    /// Throws when ICU refuses an expression.
    PlainSanitizer();
    ~PlainSanitizer();
    PlainSanitizer(const PlainSanitizer &) = delete;
    PlainSanitizer &operator=(const PlainSanitizer &) = delete;

    std::string redacted(std::string_view text);

private:
    struct Matchers;
    std::unique_ptr<Matchers> m_matchers;
};

} // namespace tallyview
