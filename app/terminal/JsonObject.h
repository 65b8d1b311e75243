#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tallyview {

/// One JSON object (RFC 8259) in the making, its members in the order in which they are added.
/// Texts are valid UTF-8; what acts on a terminal is escaped, so the result is harmless there.
/// Names are plain ASCII.
class JsonObject {
public:
    JsonObject &add(std::string_view name, std::string_view text);
    JsonObject &add(std::string_view name, const std::string &text) {
        return add(name, std::string_view(text));
    }
    JsonObject &add(std::string_view name, const char *text) {
        return add(name, std::string_view(text));
    }
    JsonObject &add(std::string_view name, std::optional<std::string_view> text); ///< or null
    JsonObject &add(std::string_view name, std::int64_t number);
    JsonObject &add(std::string_view name, bool truth);
    JsonObject &add(std::string_view name, const JsonObject &object);

    std::string text() const { return m_members.empty() ? "{}" : m_members + "}"; }

private:
    JsonObject &addValue(std::string_view name, std::string_view value);

    std::string m_members;
};

} // namespace tallyview
