#include "app/platform/Pasteboard.h"

#include <QClipboard>
#include <QGuiApplication>

namespace tallyview {

namespace {

class DesktopPasteboard : public Pasteboard {
public:
    void setText(const QString &text) override { QGuiApplication::clipboard()->setText(text); }
};

} // namespace

Pasteboard &generalPasteboard() {
    static DesktopPasteboard pasteboard;
    return pasteboard;
}

} // namespace tallyview
