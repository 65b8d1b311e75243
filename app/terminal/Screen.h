#pragma once

#include "app/terminal/Output.h"

#include <QObject>

#include <string>
#include <termios.h>
#include <vector>

namespace tallyview {

/// The terminal's second screen, on which keys do not show; its own comes back as it was with the
/// end of this object and while the process is stopped (Control-Z). At most one object, made before
/// any thread. Main thread.
class Screen : public QObject {
    Q_OBJECT

public:
    /// The output is a screen and outlives this object.
    explicit Screen(Output &output);
    ~Screen() override;

    /// Shows as many of `lines` as there is room for, and of a line wider than the screen its
    /// beginning. What is shown already is not written again.
    void show(const std::vector<std::string> &lines);

signals:
    /// It has another size, or has to be drawn anew.
    void disturbed();

private:
    void watchSignals();
    void readSignal(int descriptor);
    void enter();
    void leave();

    Output &m_output;
    bool m_hasKeys = false; ///< standard input is the terminal
    termios m_settings{};   ///< as they were
    std::string m_shown;
};

} // namespace tallyview
