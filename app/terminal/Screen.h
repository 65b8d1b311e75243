#pragma once

#include "app/terminal/Output.h"

#include <QSocketNotifier>

#include <csignal>
#include <memory>
#include <string>
#include <vector>

namespace tallyview {

/// The terminal's second screen, on which keys do not show and Control-\ does nothing; its own
/// comes back as it was with the end of this object and while the process is stopped (Control-Z).
/// At most one object, made before any thread. Main thread.
class Screen : public QObject {
    Q_OBJECT

public:
    /// The output is a screen and outlives this object.
    explicit Screen(Output &output);
    ~Screen() override;

    /// Brings the terminal's own screen back, if it is not shown, as the last act of the process; a
    /// signal handler may do that.
    static void leaveAtOnce();

    /// Shows as many of `lines` as there is room for, and of a line wider than the screen its
    /// beginning. What is shown already is not written again.
    void show(const std::vector<std::string> &lines);

signals:
    /// It has another size, or has to be drawn anew.
    void disturbed();

private:
    void watchSignals();
    void readSignals(int descriptor);
    void stop();
    void enter();
    void leave();

    Output &m_output;
    sigset_t m_maskBefore{};
    std::unique_ptr<QSocketNotifier> m_signals; ///< of a signalfd; none if there could not be one
    std::string m_shown;
};

} // namespace tallyview
