#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

/// What the standard library lacks for UTF-8 texts. Unless said otherwise the arguments are
/// valid UTF-8, results that are views point into the argument, and a character is an extended
/// grapheme cluster. Every function may be called from any thread.
namespace tallyview {

bool isValidUtf8(std::string_view bytes);
/// Valid UTF-8: each maximal ill-formed subpart of `bytes` becomes U+FFFD.
std::string decodedUtf8(std::string_view bytes);

/// Without leading and trailing Unicode white space.
std::string_view trimmed(std::string_view text);
/// Without leading and trailing space separators and tabs; line breaks stay.
std::string_view trimmedBlanks(std::string_view text);

/// Full Unicode case mappings, independent of any language.
std::string lowercased(std::string_view text);
std::string uppercased(std::string_view text);

/// Calls `visit` with each character until it returns false.
void visitCharacters(std::string_view text, const std::function<bool(std::string_view)> &visit);
std::size_t characterCount(std::string_view text);
/// The first `count` characters, or the whole text when it has fewer.
std::string_view prefixCharacters(std::string_view text, std::size_t count);

/// Normalization form C: equal for canonically equivalent texts.
std::string canonicalForm(std::string_view text);
/// Appends `text` lower-cased and in normalization form C.
void appendSearchForm(std::string &result, std::string_view text);
/// Whether two texts are canonically equivalent.
bool canonicallyEqual(std::string_view left, std::string_view right);

/// `text` with every byte outside the characters allowed in a URL's path as %XX.
std::string percentEncodedPath(std::string_view text);

/// Hash and equality for containers keyed by text; canonically equivalent keys are the same key.
struct CanonicalHash {
    using is_transparent = void;
    std::size_t operator()(std::string_view text) const;
};
struct CanonicalEqual {
    using is_transparent = void;
    bool operator()(std::string_view left, std::string_view right) const {
        return canonicallyEqual(left, right);
    }
};

} // namespace tallyview
