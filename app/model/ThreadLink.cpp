#include "app/model/ThreadLink.h"

#include "core/UnicodeText.h"

namespace tallyview {

QByteArray threadLink(std::string_view id) {
    return "orvik://threads/" + QByteArray::fromStdString(percentEncodedPath(id));
}

} // namespace tallyview
