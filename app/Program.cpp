#include "app/Program.h"

#include "app/Centre.h"
#include "app/CheckCommand.h"
#include "app/Foundation.h"
#include "app/LogRows.h"
#include "app/WindowSystem.h"
#include "app/start/CommandLine.h"
#include "app/start/TerminalDialogs.h"
#include "platform/Process.h"
#include "platform/ProgramFile.h"
#include "platform/Signals.h"
#include "platform/amqp/AmqpQueues.h"
#include "platform/curl/CurlInet.h"
#include "platform/http/MicroHttpServer.h"
#include "platform/mqtt/MosquittoClients.h"
#include "platform/posix/AplaySound.h"
#include "platform/posix/DurableFiles.h"
#include "platform/posix/NotifySocket.h"
#include "platform/posix/PrinterDevice.h"
#include "platform/posix/SystemClock.h"
#include "platform/qt/Application.h"
#include "platform/qt/QtDescriptorWatch.h"
#include "platform/qt/QtEventLoop.h"
#include "platform/qt/QtSerial.h"
#include "platform/qt/QtSignalWatch.h"
#include "platform/qt/QtSockets.h"
#include "platform/sqlite/SqliteJournal.h"

#include <QtCore/QCoreApplication>

#include <cstdio>
#include <memory>
#include <optional>

namespace nordkeep {
namespace {

constexpr int kStartFailed = 1;
constexpr int kWrongUse = 2;

std::string VersionText() {
    const std::string commit = NORDKEEP_COMMIT;
    return commit.empty() ? NORDKEEP_VERSION : NORDKEEP_VERSION " (" + commit + ")";
}

/// What is answered in the terminal and then ends, with its exit status; an unknown switch is named and does
/// not stop the start.
std::optional<int> AnswerInTerminal(const CommandLine& commandLine, const char* name) {
    if (commandLine.unknownOption) {
        std::fprintf(stderr, "%s: unknown option %s, see --help\n", name, commandLine.unknownOption->c_str());
        return kWrongUse;
    }
    if (commandLine.help) std::fputs(CommandLineHelp(name).c_str(), stdout);
    if (commandLine.version) std::printf("%s %s\n", name, VersionText().c_str());
    for (const std::string& word : commandLine.unknown) {
        std::fprintf(stderr, "%s: unknown switch %s\n", name, word.c_str());
    }
    if (commandLine.help || commandLine.version) return 0;
    if (commandLine.check) return RunCheckCommand(commandLine);
    if (!IsServiceFolderUsable(commandLine)) return kStartFailed;
    return std::nullopt;
}

bool IsUnattended() {
    return qEnvironmentVariableIntValue("NORDKEEP_UNATTENDED") != 0;
}

/// The parts of the machine that the program stands on.
struct Machine {
    SystemClock clock{};
    QtEventLoop loop{};
    DurableFiles disk{};
    SqliteJournal journal{SqliteJournal::kMostOfLog};
    QtSockets sockets{};
    QtSerial serial{};
    AmqpQueues queues{};
    PrinterDevice printer{};
    AplaySound sound{};
    QtDescriptorWatches watches{};
    CurlInetFactory inet{loop, watches};
    MicroHttpServer http{loop, watches};
    MosquittoClients mqtt{loop, watches};
    NotifySocket serviceManager{};
    TerminalDialogs terminalDialogs{};

    /// `questions`: who asks on the screen; none to ask nobody.
    PlatformParts Parts(bool hasScreen, Dialogs* questions) {
        return {.clock = clock,
                .loop = loop,
                .disk = disk,
                .journal = journal,
                .sockets = sockets,
                .serial = serial,
                .inet = inet,
                .queues = queues,
                .printer = printer,
                .sound = sound,
                .http = http,
                .mqtt = mqtt,
                .serviceManager = serviceManager,
                .dialogs = questions ? *questions : terminalDialogs,
                .programFile = ProgramFile(),
                .hasScreen = hasScreen};
    }
};

bool IsSetup(const CommandLine& commandLine) {
    return commandLine.install || commandLine.uninstall;
}

CommandLine ReadCommandLine(int argc, char** argv, const ProgramKind& kind) {
    CommandLine commandLine = ParseCommandLine({argv + 1, argv + argc});
    if (!kind.windows && !IsSetup(commandLine)) commandLine.runAsService = true;
    return commandLine;
}

/// The windows of a start that has some.
WindowSystem* WindowsFor(const CommandLine& commandLine, const ProgramKind& kind) {
    const bool isWanted = !commandLine.runAsService && !IsSetup(commandLine);
    return isWanted && IsScreenThere() ? kind.windows : nullptr;
}

/// From a centre that is there until the program's end.
int RunCentre(Foundation& foundation, LogRows& logRows, Signals& endSignals, WindowSystem* windows) {
    Centre centre(foundation);
    logRows.ShowAt(centre.Place());
    std::unique_ptr<ProgramWindow> window;
    if (windows) window = windows->MakeWindow(centre, foundation, !IsUnattended());
    const QtSignalWatch watch(endSignals, [&centre] { centre.CloseAndShutdownEverything(); });
    if (window) window->Show();
    centre.AskBeforeStart();
    // From here on there is something that a clean stop saves; until now an end signal ends whatever waits.
    endSignals.EndAtOnce(false);
    centre.Start();
    if (window) centre.Place().FirstShown();
    const int status = foundation.Platform().loop.Run();
    logRows.Leave();
    return status;
}

}  // namespace

int RunProgram(int argc, char** argv, const ProgramKind& kind) {
    const CommandLine commandLine = ReadCommandLine(argc, argv, kind);
    if (const auto status = AnswerInTerminal(commandLine, kind.name)) return *status;

    RaiseDescriptorLimit();
    if (!commandLine.install) KeepFilesFromOthers();  // a unit is for all to read
    Signals endSignals;
    endSignals.EndAtOnce(true);
    WindowSystem* windows = WindowsFor(commandLine, kind);
    const auto application = windows ? windows->MakeApplication(argc, argv) : MakeCoreApplication(argc, argv);
    Machine machine;
    Dialogs* questions = windows && !IsUnattended() ? &windows->Questions() : nullptr;
    Foundation foundation(machine.Parts(windows != nullptr, questions), commandLine);
    LogRows logRows(foundation.Log(), machine.loop, qEnvironmentVariableIsSet("JOURNAL_STREAM"));
    if (const auto status = foundation.Prepare()) return *status;
    return RunCentre(foundation, logRows, endSignals, windows);
}

}  // namespace nordkeep
