#pragma once

#include "app/model/DashboardModel.h"
#include "app/platform/DesktopUrlOpener.h"
#include "app/platform/IniUserDefaults.h"
#include "app/terminal/Arguments.h"
#include "app/terminal/Output.h"
#include "app/terminal/Paint.h"

#include <string>
#include <vector>

namespace tallyview {

/// A terminal has nothing to copy to.
class NoPasteboard : public Pasteboard {
public:
    void setText(const QString &) override {}
};

/// What one command line asks for, done over the model that the window has too. Needs a
/// QCoreApplication; main thread.
class TerminalProgram {
public:
    explicit TerminalProgram(Arguments arguments);

    /// Returns the exit status: 1 where something failed, which standard error has been told.
    int run();

private:
    int runOnce();
    int withThread();
    void list();
    int show(const ThreadRecord &thread);
    int open(const ThreadRecord &thread);
    void listProjects();
    int watch();
    void write(const std::vector<std::string> &lines);
    /// Of a terminal; elsewhere more than any text takes.
    std::size_t columns() const;

    Arguments m_arguments;
    Output m_output;
    Paint m_paint;
    IniUserDefaults m_defaults{IniUserDefaults::defaultFilePath(), nullptr,
                               IniUserDefaults::Changes::ignored};
    DesktopUrlOpener m_urlOpener;
    NoPasteboard m_pasteboard;
    DashboardModel m_model;
};

/// The process. Returns the exit status: 2 for arguments that are not understood.
int runTerminal(int argc, char **argv);

} // namespace tallyview
