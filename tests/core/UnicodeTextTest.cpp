#include "core/UnicodeText.h"

#include <gtest/gtest.h>
#include <unicode/unistr.h>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

namespace tallyview {
namespace {

using Pairs = std::vector<std::pair<std::string, std::string>>;

TEST(UnicodeText, replacesMaximalIllFormedSubparts) {
    for (const auto &[bytes, text] : Pairs{{"plain 文", "plain 文"},
                                           {"a\xFF\xFE", "a\uFFFD\uFFFD"},
                                           {"\xE6\x96x", "\uFFFDx"},
                                           {"\xF0\x9F\x98\xE6\x96\x87", "\uFFFD文"},
                                           {"\xED\xA0\x80", "\uFFFD\uFFFD\uFFFD"},
                                           {"\xC0\xAF", "\uFFFD\uFFFD"},
                                           {"\xF4\x90\x80\x80", "\uFFFD\uFFFD\uFFFD\uFFFD"}}) {
        EXPECT_EQ(decodedUtf8(bytes), text) << testing::PrintToString(bytes);
        EXPECT_EQ(isValidUtf8(bytes), bytes == text);
    }
}

TEST(UnicodeText, trimsWhiteSpaceOrBlanksOnly) {
    for (const auto &[text, expected] : Pairs{{"", "|"},
                                              {"\n a b \r\n", "a b|\n a b \r\n"},
                                              {"\u3000\t\u00A0题\u2028", "题|题\u2028"},
                                              {"\u0085\v\fx\u2029", "x|\u0085\v\fx\u2029"},
                                              {"\u200Bx\uFEFF", "\u200Bx\uFEFF|\u200Bx\uFEFF"},
                                              {" e\u0301 ", "e\u0301|e\u0301"}}) {
        EXPECT_EQ(std::string(trimmed(text)) + "|" + std::string(trimmedBlanks(text)), expected);
    }
}

TEST(UnicodeText, mapsCaseFully) {
    EXPECT_EQ(uppercased("straße ﬁ ŉ"), "STRASSE FI ʼN");
    EXPECT_EQ(lowercased("ΟΔΟΣ İI"), "οδος i\u0307i");
}

TEST(UnicodeText, countsCharacters) {
    // Each character is followed by a bar.
    for (const std::string text :
         {"", "a|b|", "\r\n|", "\n|\r|", "a|\r\n|\n|", "文|\r\n|", "e\u0301|x|",
          "👩‍👩‍👧‍👦|", "🇨🇳|🇨|", "각|", "\u0600{|"}) {
        std::string joined = text;
        std::erase(joined, '|');
        const auto count = static_cast<std::size_t>(std::ranges::count(text, '|'));
        EXPECT_EQ(characterCount(joined), count) << text;
        EXPECT_EQ(prefixCharacters(joined, count), joined);
        EXPECT_EQ(prefixCharacters(joined, 1), text.substr(0, text.find('|'))) << text;
    }
}

TEST(UnicodeText, comparesCanonically) {
    for (const auto &[left, right, areEqual] : {std::tuple("é", "e\u0301", true),
                                                {"\u212A", "K", true},
                                                {"가", "\u1100\u1161", true},
                                                {"e", "é", false},
                                                {"ﬁ", "fi", false},
                                                {"a", "A", false},
                                                {"", " ", false}}) {
        EXPECT_EQ(canonicallyEqual(left, right), areEqual) << left;
        EXPECT_EQ(CanonicalHash()(left) == CanonicalHash()(right), areEqual) << left;
    }
}

TEST(UnicodeText, percentEncodesWhatAPathMayNotHold) {
    EXPECT_EQ(percentEncodedPath("aZ09-._~!$&'()*+,;=:@/ %?#[]\"<>\\^`{|}\x7F任"),
              "aZ09-._~!$&'()*+,;=:@/%20%25%3F%23%5B%5D%22%3C%3E%5C%5E%60%7B%7C%7D%7F%E4%BB%BB");
}

TEST(UnicodeText, takesNoShortCutThatChangesATextOrItsCharacters) {
    for (UChar32 codePoint = 1; codePoint <= 0xFFFF; ++codePoint) {
        if (U_IS_SURROGATE(codePoint)) {
            continue;
        }
        std::string letter;
        icu::UnicodeString(codePoint).toUTF8String(letter);
        for (const std::string &text : {"AZ@[" + letter, letter + "\u6587a\u0301"}) {
            std::string form;
            appendSearchForm(form, text);
            ASSERT_EQ(form, canonicalForm(lowercased(text))) << text;
        }
        // A mark beside it takes the text off every short cut.
        const std::string plain = "a" + letter + "文/" + letter + "\r\n";
        ASSERT_EQ(characterCount(plain) + 2, characterCount(plain + "/\u0301-")) << codePoint;
    }
}

} // namespace
} // namespace tallyview
