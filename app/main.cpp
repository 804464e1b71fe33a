#include "app/Centre.h"
#include "app/CommandLine.h"
#include "app/Foundation.h"
#include "app/Screen.h"
#include "app/TerminalDialogs.h"
#include "console/views/lists/Icons.h"
#include "platform/ProgramFile.h"
#include "platform/Signals.h"
#include "platform/amqp/AmqpQueues.h"
#include "platform/posix/AplaySound.h"
#include "platform/posix/DurableFiles.h"
#include "platform/posix/NotifySocket.h"
#include "platform/posix/PrinterDevice.h"
#include "platform/posix/SystemClock.h"
#include "platform/qt/Application.h"
#include "platform/qt/QtEventLoop.h"
#include "platform/qt/QtInet.h"
#include "platform/qt/QtSerial.h"
#include "platform/qt/QtSignalWatch.h"
#include "platform/qt/QtSockets.h"

#include <QtWidgets/QApplication>

#include <cstdio>
#include <memory>
#include <vector>

namespace {

using namespace nordkeep;

/// --help and --version answer and end; an unknown switch is named and does not stop the start.
bool AnswerInTerminal(const CommandLine& commandLine) {
    if (commandLine.help) std::fputs(CommandLineHelp().c_str(), stdout);
    if (commandLine.version) std::printf("nordkeep %s\n", NORDKEEP_VERSION);
    for (const std::string& word : commandLine.unknown) {
        std::fprintf(stderr, "nordkeep: unknown switch %s\n", word.c_str());
    }
    return commandLine.help || commandLine.version;
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

void PrintLogRow(const LogRow& row) {
    std::printf("%s %s %d %s\n", row.date.c_str(), row.time.c_str(), static_cast<int>(row.kind),
                ToUtf8(row.text).c_str());
    std::fflush(stdout);
}

}  // namespace

int main(int argc, char** argv) {
    const CommandLine commandLine = ParseCommandLine({argv + 1, argv + argc});
    if (AnswerInTerminal(commandLine)) return 0;

    Signals endSignals;
    const bool isSetup = commandLine.install || commandLine.uninstall;
    const bool hasScreen = !commandLine.runAsService && !isSetup && IsScreenThere();
    const auto application = MakeApplication(argc, argv, hasScreen);
    SystemClock clock;
    QtEventLoop loop;
    DurableFiles disk;
    QtSockets sockets;
    QtSerial serial;
    QtInetFactory inet;
    AmqpQueues queues;
    PrinterDevice printer;
    AplaySound sound;
    NotifySocket serviceManager;
    TerminalDialogs terminalDialogs;
    QtDialogs screenDialogs;
    const bool hasPerson = hasScreen && !IsUnattended();

    Foundation foundation({.clock = clock,
                           .loop = loop,
                           .disk = disk,
                           .sockets = sockets,
                           .serial = serial,
                           .inet = inet,
                           .queues = queues,
                           .printer = printer,
                           .sound = sound,
                           .serviceManager = serviceManager,
                           .dialogs = hasPerson ? static_cast<Dialogs&>(screenDialogs) : terminalDialogs,
                           .programFile = ProgramFile(),
                           .hasScreen = hasScreen},
                          commandLine);
    std::vector<LogRow> earlyRows;
    foundation.Log().SetRowListener([&](const LogRow& row) {
        PrintLogRow(row);
        earlyRows.push_back(row);
    });
    if (const auto status = foundation.Prepare()) return *status;

    Centre centre(foundation);
    for (const LogRow& row : earlyRows) centre.Place().NoteLogRow(row);
    foundation.Log().SetRowListener([&](const LogRow& row) {
        PrintLogRow(row);
        centre.Place().NoteLogRow(row);
    });
    std::unique_ptr<Screen> screen;
    if (hasScreen)
        screen = std::make_unique<Screen>(centre, foundation, hasPerson ? &screenDialogs : nullptr);
    const QtSignalWatch watch(endSignals, [&centre] { centre.CloseAndShutdownEverything(); });
    if (screen) screen->Show();
    centre.Start();
    if (screen) centre.Place().FirstShown();
    const int status = loop.Run();
    foundation.Log().SetRowListener(&PrintLogRow);
    return status;
}
