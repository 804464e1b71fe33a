#include "app/Centre.h"
#include "app/CheckCommand.h"
#include "app/CommandLine.h"
#include "app/Foundation.h"
#include "app/Screen.h"
#include "app/TerminalDialogs.h"
#include "console/views/lists/Icons.h"
#include "platform/Process.h"
#include "platform/ProgramFile.h"
#include "platform/Signals.h"
#include "platform/amqp/AmqpQueues.h"
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
#include "platform/qt/QtInet.h"
#include "platform/qt/QtSerial.h"
#include "platform/qt/QtSignalWatch.h"
#include "platform/qt/QtSockets.h"
#include "platform/sqlite/SqliteJournal.h"

#include <QtWidgets/QApplication>

#include <cstdio>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace {

using namespace nordkeep;

/// What is answered in the terminal and then ends, with its exit status; an unknown switch is named and does
/// not stop the start.
std::optional<int> AnswerInTerminal(const CommandLine& commandLine) {
    constexpr int kWrongUse = 2;
    if (commandLine.unknownOption) {
        std::fprintf(stderr, "nordkeep: unknown option %s, see --help\n", commandLine.unknownOption->c_str());
        return kWrongUse;
    }
    if (commandLine.help) std::fputs(CommandLineHelp().c_str(), stdout);
    if (commandLine.version) std::printf("nordkeep %s\n", NORDKEEP_VERSION);
    for (const std::string& word : commandLine.unknown) {
        std::fprintf(stderr, "nordkeep: unknown switch %s\n", word.c_str());
    }
    if (commandLine.help || commandLine.version) return 0;
    if (commandLine.check) return RunCheckCommand(commandLine);
    if (!IsServiceFolderUsable(commandLine)) return 1;
    return std::nullopt;
}

bool IsUnattended() {
    return qEnvironmentVariableIntValue("NORDKEEP_UNATTENDED") != 0;
}

/// An application with windows where there is a screen and a person, else one that needs neither.
std::unique_ptr<QCoreApplication> MakeApplication(int& argc, char** argv, bool hasScreen) {
    if (!hasScreen) return MakeCoreApplication(argc, argv);
    auto application = std::make_unique<QApplication>(argc, argv);
    SettleApplication();
    application->setQuitOnLastWindowClosed(false);
    application->setWindowIcon(ProgramIcon());
    return application;
}

/// The parts of the machine that the program stands on.
struct Machine {
    SystemClock clock{};
    QtEventLoop loop{};
    DurableFiles disk{};
    SqliteJournal journal{};
    QtSockets sockets{};
    QtSerial serial{};
    QtInetFactory inet{};
    AmqpQueues queues{};
    PrinterDevice printer{};
    AplaySound sound{};
    QtDescriptorWatches watches{};
    MicroHttpServer http{loop, watches};
    MosquittoClients mqtt{loop, watches};
    NotifySocket serviceManager{};
    TerminalDialogs terminalDialogs{};
    QtDialogs screenDialogs{};

    PlatformParts Parts(bool hasScreen) {
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
                .dialogs = DialogsFor(hasScreen) ? static_cast<Dialogs&>(screenDialogs) : terminalDialogs,
                .programFile = ProgramFile(),
                .hasScreen = hasScreen};
    }
    /// Where there is a screen and somebody in front of it; else none.
    QtDialogs* DialogsFor(bool hasScreen) { return hasScreen && !IsUnattended() ? &screenDialogs : nullptr; }
};

/// A line of the log on standard output. The system's own log dates its lines itself, and goes by a number in
/// front of each: 3 error, 4 warning, 6 information.
void PrintRow(const LogRow& row, bool isForSystemLog) {
    const std::string text = ToUtf8(row.text);
    if (!isForSystemLog) {
        std::printf("%s %s %d %s\n", row.date.c_str(), row.time.c_str(), static_cast<int>(row.kind),
                    text.c_str());
        return;
    }
    const int level = row.kind == LogKind::Failure ? 3 : row.kind == LogKind::Oddity ? 4 : 6;
    std::printf("<%d>%s\n", level, text.c_str());
}

/// Shows the log in the terminal, and keeps it for the window until there is one.
class LogRows {
 public:
    LogRows(SysLog& log, EventLoop& loop) : log_(log), loop_(loop) {
        log_.SetRowListener([this](const LogRow& row) { Take(row); });
    }
    ~LogRows() {
        log_.SetRowListener({});
        Flush();
    }
    LogRows(const LogRows&) = delete;
    LogRows& operator=(const LogRows&) = delete;

    void ShowAt(Workplace& place) {
        place_ = &place;
        for (const LogRow& row : std::exchange(early_, {})) place.NoteLogRow(row);
    }
    /// The place goes; what is still to be said goes to the terminal alone.
    void Leave() { place_ = nullptr; }

 private:
    void Take(const LogRow& row) {
        PrintRow(row, isForSystemLog_);
        // Of alarms there are many in a turn.
        if (row.kind != LogKind::Alarm) {
            Flush();
        } else if (!std::exchange(isFlushWaiting_, true)) {
            loop_.PostAtEnd([this] { Flush(); });
        }
        place_ ? place_->NoteLogRow(row) : early_.push_back(row);
    }

    void Flush() {
        isFlushWaiting_ = false;
        std::fflush(stdout);
    }

    SysLog& log_;
    EventLoop& loop_;
    const bool isForSystemLog_ = qEnvironmentVariableIsSet("JOURNAL_STREAM");
    bool isFlushWaiting_ = false;
    Workplace* place_ = nullptr;
    std::vector<LogRow> early_{};
};

/// Whether this start is one with a window.
bool WantsScreen(const CommandLine& commandLine) {
    const bool isSetup = commandLine.install || commandLine.uninstall;
    return !commandLine.runAsService && !isSetup && IsScreenThere();
}

}  // namespace

int main(int argc, char** argv) {
    const CommandLine commandLine = ParseCommandLine({argv + 1, argv + argc});
    if (const auto status = AnswerInTerminal(commandLine)) return *status;

    RaiseDescriptorLimit();
    if (!commandLine.install) KeepFilesFromOthers();  // a unit is for all to read
    Signals endSignals;
    endSignals.EndAtOnce(true);
    const bool hasScreen = WantsScreen(commandLine);
    const auto application = MakeApplication(argc, argv, hasScreen);
    Machine machine;
    Foundation foundation(machine.Parts(hasScreen), commandLine);
    LogRows logRows(foundation.Log(), machine.loop);
    if (const auto status = foundation.Prepare()) return *status;

    Centre centre(foundation);
    logRows.ShowAt(centre.Place());
    std::unique_ptr<Screen> screen;
    if (hasScreen) screen = std::make_unique<Screen>(centre, foundation, machine.DialogsFor(hasScreen));
    const QtSignalWatch watch(endSignals, [&centre] { centre.CloseAndShutdownEverything(); });
    if (screen) screen->Show();
    centre.AskBeforeStart();
    // From here on there is something that a clean stop saves; until now an end signal ends whatever waits.
    endSignals.EndAtOnce(false);
    centre.Start();
    if (screen) centre.Place().FirstShown();
    const int status = machine.loop.Run();
    logRows.Leave();
    return status;
}
