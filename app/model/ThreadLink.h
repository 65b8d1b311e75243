#pragma once

#include <QByteArray>

#include <string_view>

namespace tallyview {

/// The URL that opens the thread `id` in the agent's own application, percent-encoded.
QByteArray threadLink(std::string_view id);

} // namespace tallyview
