#include "app/terminal/Screen.h"

#include <initializer_list>
#include <sys/signalfd.h>
#include <termios.h>
#include <unistd.h>
#include <utility>

namespace tallyview {

namespace {

// Second screen, no cursor, and no line that goes on in the next one; the end may find a colour on.
constexpr std::string_view enterSequence = "\033[?1049h\033[?25l\033[?7l";
constexpr std::string_view leaveSequence = "\033[m\033[?7h\033[?25h\033[?1049l";
constexpr std::string_view toTop = "\033[H";
// Before the text: behind one as wide as the screen it would take the last character.
constexpr std::string_view eraseLine = "\033[K";
constexpr std::string_view eraseBelow = "\033[J";

sigset_t setOf(std::initializer_list<int> numbers) {
    sigset_t set;
    sigemptyset(&set);
    for (const int number : numbers) {
        sigaddset(&set, number);
    }
    return set;
}

// Here for a signal handler.
volatile std::sig_atomic_t isShown = 0;
termios settingsBefore{};

} // namespace

Screen::Screen(Output &output) : m_output(output) {
    watchSignals();
    enter();
}

Screen::~Screen() {
    leave();
    if (m_signals) {
        const auto descriptor = static_cast<int>(m_signals->socket());
        m_signals.reset();
        close(descriptor);
        sigprocmask(SIG_SETMASK, &m_maskBefore, nullptr);
    }
}

void Screen::watchSignals() {
    const sigset_t followed = setOf({SIGWINCH, SIGTSTP});
    const int descriptor = signalfd(-1, &followed, SFD_CLOEXEC | SFD_NONBLOCK);
    if (descriptor < 0) {
        return; // they then do what they always do
    }
    sigprocmask(SIG_BLOCK, &followed, &m_maskBefore);
    m_signals = std::make_unique<QSocketNotifier>(descriptor, QSocketNotifier::Read);
    connect(m_signals.get(), &QSocketNotifier::activated, this,
            [this, descriptor] { readSignals(descriptor); });
}

void Screen::readSignals(int descriptor) {
    signalfd_siginfo signal{};
    while (read(descriptor, &signal, sizeof signal) == sizeof signal) {
        if (signal.ssi_signo == SIGTSTP) {
            stop();
        }
    }
    m_shown.clear();
    emit disturbed();
}

/// By the signal itself, which stops none that no shell could wake again; SIGSTOP would.
void Screen::stop() {
    leave();
    const sigset_t own = setOf({SIGTSTP});
    raise(SIGTSTP);
    sigprocmask(SIG_UNBLOCK, &own, nullptr);
    sigprocmask(SIG_BLOCK, &own, nullptr);
    enter();
}

void Screen::enter() {
    tcgetattr(STDOUT_FILENO, &settingsBefore);
    isShown = 1;
    termios quiet = settingsBefore;
    quiet.c_lflag &= ~static_cast<tcflag_t>(ECHO | ICANON);
    quiet.c_cc[VQUIT] = _POSIX_VDISABLE;
    tcsetattr(STDOUT_FILENO, TCSANOW, &quiet);
    m_output.write(enterSequence);
}

/// What has been typed meanwhile was for nobody.
void Screen::leave() {
    m_output.write(leaveSequence);
    tcsetattr(STDOUT_FILENO, TCSAFLUSH, &settingsBefore);
    isShown = 0;
}

void Screen::leaveAtOnce() {
    if (isShown != 0) {
        [[maybe_unused]] const ssize_t written =
            ::write(STDOUT_FILENO, leaveSequence.data(), leaveSequence.size());
        tcsetattr(STDOUT_FILENO, TCSAFLUSH, &settingsBefore);
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
