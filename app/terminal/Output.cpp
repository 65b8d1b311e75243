#include "app/terminal/Output.h"

#include <QByteArray>

#include <algorithm>
#include <cerrno>
#include <poll.h>
#include <sys/ioctl.h>
#include <unistd.h>

namespace tallyview {

namespace {

constexpr std::size_t narrowest = 10;

} // namespace

bool Output::standardOutputIsTerminal() { return isatty(STDOUT_FILENO) == 1; }

bool Output::isScreen() const {
    const QByteArray kind = qgetenv("TERM");
    return m_isTerminal && !kind.isEmpty() && kind != "dumb";
}

Output::Size Output::size() const {
    winsize window{};
    ioctl(STDOUT_FILENO, TIOCGWINSZ, &window);
    return {.columns = window.ws_col > 0 ? std::max(narrowest, std::size_t{window.ws_col}) : 80,
            .rows = window.ws_row > 0 ? window.ws_row : std::size_t{24}};
}

void Output::write(std::string_view bytes) {
    while (!bytes.empty() && m_error == 0) {
        const ssize_t written = ::write(STDOUT_FILENO, bytes.data(), bytes.size());
        if (written >= 0) {
            bytes.remove_prefix(static_cast<std::size_t>(written));
        } else if (errno == EAGAIN) { // whoever shares the terminal asked it not to wait
            pollfd wanted{.fd = STDOUT_FILENO, .events = POLLOUT, .revents = 0};
            poll(&wanted, 1, -1);
        } else if (errno != EINTR) {
            m_error = errno;
        }
    }
}

bool Output::hasReader() const {
    pollfd end{.fd = STDOUT_FILENO, .events = 0, .revents = 0};
    return poll(&end, 1, 0) <= 0 || (end.revents & (POLLHUP | POLLERR)) == 0;
}

} // namespace tallyview
