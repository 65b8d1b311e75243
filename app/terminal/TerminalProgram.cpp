#include "app/terminal/TerminalProgram.h"

#include "app/platform/TerminationSignals.h"
#include "app/presentation/ThreadDetail.h"
#include "app/presentation/ThreadRows.h"
#include "app/terminal/Complaint.h"
#include "app/terminal/JsonReport.h"
#include "app/terminal/Listing.h"
#include "app/terminal/ShortIDs.h"
#include "app/terminal/StatusLine.h"
#include "app/terminal/TerminalText.h"
#include "app/terminal/ThreadSheet.h"
#include "app/terminal/ThreadTable.h"
#include "app/terminal/Watch.h"
#include "core/HomeDirectory.h"

#include <QCoreApplication>
#include <QProcess>
#include <QStandardPaths>

#include <csignal>
#include <cstdlib>
#include <cstring>
#include <utility>

namespace tallyview {

namespace {

constexpr std::size_t widestPaper = 1'000'000;

bool wantsColor(Arguments::Color color, const Output &output) {
    return color == Arguments::Color::always ||
           (color == Arguments::Color::automatic && output.isScreen() &&
            qgetenv("NO_COLOR").isEmpty());
}

/// The exit status. Says why the output could not be written.
int finished(const Output &output) {
    if (output.error() == 0) {
        return EXIT_SUCCESS;
    }
    complain(std::string("无法输出：") + std::strerror(output.error()));
    return EXIT_FAILURE;
}

} // namespace

TerminalProgram::TerminalProgram(Arguments arguments)
    : m_arguments(std::move(arguments))
    , m_paint{.isColored = wantsColor(m_arguments.color, m_output)}
    , m_model(OrvikThreadStore(agentDatabase()), {.defaults = m_defaults,
                                                  .urlOpener = m_urlOpener,
                                                  .pasteboard = m_pasteboard,
                                                  .refreshInterval = m_arguments.interval}) {}

int TerminalProgram::run() {
    const bool watches = m_arguments.command == Arguments::Command::watch;
    if (watches && (m_arguments.json || !m_output.isScreen())) {
        m_arguments.liftStateAndTime(); // a thread that starts or completes may be any
    }
    applyFilters(m_model, m_arguments);
    return watches ? watch() : runOnce();
}

int TerminalProgram::runOnce() {
    QObject::connect(&m_model, &DashboardModel::refreshFinished, qApp, &QCoreApplication::quit);
    m_model.refresh();
    QCoreApplication::exec();
    if (const auto &error = m_model.errorMessage()) {
        complain(*error);
        return EXIT_FAILURE;
    }
    switch (m_arguments.command) {
    case Arguments::Command::show:
    case Arguments::Command::open:
        return withThread();
    case Arguments::Command::status:
        write({statusLine(m_model, m_arguments)});
        break;
    case Arguments::Command::projects:
        listProjects();
        break;
    case Arguments::Command::list:
    case Arguments::Command::watch:
    case Arguments::Command::help:
    case Arguments::Command::version:
        list();
    }
    return finished(m_output);
}

void TerminalProgram::list() {
    const Listing listing = listingOf(m_model, m_arguments);
    if (m_arguments.json) {
        m_output.write(listingJson(listing, m_model, m_arguments.limit));
    } else if (listing.groups.empty() && m_output.isTerminal()) {
        write({emptyListTitle().toStdString()});
    } else {
        write(tableLines(listing, ShortIDs(m_model.threads()), m_model.environment().utcOffset(),
                         m_arguments.limit, {.columns = columns(), .paint = m_paint}));
    }
}

void TerminalProgram::listProjects() {
    std::vector<std::string> names;
    for (const ProjectCount &project : m_model.projects()) {
        // What is not shown as it is could not be given back as it is.
        if (terminalText(project.name) == project.name) {
            names.push_back(project.name);
        }
    }
    write(names);
}

int TerminalProgram::withThread() {
    const auto thread = findThread(m_model.threads(), m_arguments.id);
    if (!thread) {
        complain(thread.error());
        return EXIT_FAILURE;
    }
    return m_arguments.command == Arguments::Command::open ? open(*thread) : show(*thread);
}

int TerminalProgram::show(const ThreadRecord &thread) {
    if (m_arguments.json) {
        write({threadJson(thread, m_model, m_model.environment().utcOffset()).text()});
    } else {
        const ThreadDetail detail = threadDetail(
            thread, m_model.pinnedIDs().contains(thread.id()), m_model.environment().utcOffset(),
            ThreadFormatting::numberIn(m_model.environment().numberLocale));
        write(sheetLines(detail, columns(), m_paint));
    }
    return finished(m_output);
}

int TerminalProgram::open(const ThreadRecord &thread) {
    if (QStandardPaths::findExecutable(QStringLiteral("xdg-open")).isEmpty()) {
        complain("没有 xdg-open，无法在 Orvik 中打开");
        return EXIT_FAILURE;
    }
    m_model.open(thread);
    // What has been handed to the desktop goes on without this process, once it is handed over.
    for (QProcess *launcher : qApp->findChildren<QProcess *>()) {
        if (!launcher->waitForFinished()) {
            complain("无法启动 " + launcher->program().toStdString());
            return EXIT_FAILURE;
        }
    }
    return finished(m_output);
}

int TerminalProgram::watch() {
    const TerminationSignals termination(&Screen::leaveAtOnce);
    Watch watch(m_model, m_arguments, m_output, m_paint);
    QObject::connect(&termination, &TerminationSignals::received, qApp, &QCoreApplication::quit);
    QObject::connect(&watch, &Watch::ended, qApp, &QCoreApplication::quit);
    m_model.startMonitoring();
    QCoreApplication::exec();
    return finished(m_output);
}

void TerminalProgram::write(const std::vector<std::string> &lines) {
    std::string text;
    for (const std::string &line : lines) {
        text.append(line).append("\n");
    }
    m_output.write(text);
}

std::size_t TerminalProgram::columns() const {
    return m_output.isTerminal() ? m_output.size().columns : widestPaper;
}

namespace {

int print(std::string_view text) {
    Output output;
    output.write(text);
    return finished(output);
}

/// Qt tells of a locale that is not UTF-8; texts are UTF-8 all the same.
void keepSilent(QtMsgType, const QMessageLogContext &, const QString &) {}

} // namespace

int runTerminal(int argc, char **argv) {
    std::signal(SIGPIPE, SIG_DFL); // a closed pipe is the end, whatever the parent ignores
    const auto handler = qInstallMessageHandler(keepSilent);
    const QCoreApplication application(argc, argv);
    qInstallMessageHandler(handler);

    auto arguments = readArguments(QCoreApplication::arguments().mid(1));
    if (!arguments) {
        complain(arguments.error().toStdString());
        return 2;
    }
    switch (arguments->command) {
    case Arguments::Command::help:
        return print(helpText().toStdString());
    case Arguments::Command::version:
        return print("tallyview " TALLYVIEW_VERSION "\n");
    default:
        return TerminalProgram(*std::move(arguments)).run();
    }
}

} // namespace tallyview
