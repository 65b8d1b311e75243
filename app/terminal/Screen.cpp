#include "app/terminal/Screen.h"

#include <QSocketNotifier>

#include <csignal>
#include <sys/signalfd.h>
#include <unistd.h>
#include <utility>

namespace tallyview {

namespace {

// Second screen, no cursor, and no line that goes on in the next one.
constexpr std::string_view enterSequence = "\033[?1049h\033[?25l\033[?7l";
constexpr std::string_view leaveSequence = "\033[?7h\033[?25h\033[?1049l";
constexpr std::string_view toTop = "\033[H";
// Before the text: behind one as wide as the screen it would take the last character.
constexpr std::string_view eraseLine = "\033[K";
constexpr std::string_view eraseBelow = "\033[J";

} // namespace

Screen::Screen(Output &output) : m_output(output) {
    watchSignals();
    enter();
}

Screen::~Screen() { leave(); }

void Screen::watchSignals() {
    sigset_t followed;
    sigemptyset(&followed);
    sigaddset(&followed, SIGWINCH);
    sigaddset(&followed, SIGTSTP);
    const int descriptor = signalfd(-1, &followed, SFD_CLOEXEC | SFD_NONBLOCK);
    if (descriptor < 0) {
        return; // they then do what they always do
    }
    sigprocmask(SIG_BLOCK, &followed, nullptr);
    auto *notifier = new QSocketNotifier(descriptor, QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this,
            [this, descriptor] { readSignal(descriptor); });
}

void Screen::readSignal(int descriptor) {
    signalfd_siginfo signal{};
    while (read(descriptor, &signal, sizeof signal) == sizeof signal) {
        if (signal.ssi_signo == SIGTSTP) {
            leave();
            raise(SIGSTOP);
            enter();
        }
    }
    m_shown.clear();
    emit disturbed();
}

void Screen::enter() {
    m_hasKeys = tcgetattr(STDIN_FILENO, &m_settings) == 0;
    if (m_hasKeys) {
        termios quiet = m_settings;
        quiet.c_lflag &= ~static_cast<tcflag_t>(ECHO | ICANON);
        tcsetattr(STDIN_FILENO, TCSANOW, &quiet);
    }
    m_output.write(enterSequence);
}

/// What has been typed meanwhile was for nobody.
void Screen::leave() {
    m_output.write(leaveSequence);
    if (m_hasKeys) {
        tcsetattr(STDIN_FILENO, TCSAFLUSH, &m_settings);
    }
}

void Screen::show(const std::vector<std::string> &lines) {
    const std::size_t rows = m_output.size().rows;
    std::string picture(toTop);
    for (std::size_t i = 0; i < lines.size() && i < rows; ++i) {
        picture.append(i > 0 ? "\r\n" : "").append(eraseLine).append(lines[i]);
    }
    // Below the last row there is nothing, and the row would scroll.
    picture += lines.size() < rows ? std::string("\r\n").append(eraseBelow) : std::string();
    if (std::exchange(m_shown, picture) != picture) {
        m_output.write(picture);
    }
}

} // namespace tallyview
