#include "app/Centre.h"
#include "app/CommandLine.h"
#include "app/Foundation.h"
#include "app/TerminalDialogs.h"
#include "platform/ProgramFile.h"
#include "platform/Signals.h"
#include "platform/amqp/AmqpQueues.h"
#include "platform/posix/AplaySound.h"
#include "platform/posix/NotifySocket.h"
#include "platform/posix/PrinterDevice.h"
#include "platform/posix/SystemClock.h"
#include "platform/qt/Application.h"
#include "platform/qt/QtEventLoop.h"
#include "platform/qt/QtInet.h"
#include "platform/qt/QtSerial.h"
#include "platform/qt/QtSignalWatch.h"
#include "platform/qt/QtSockets.h"

#include <QCoreApplication>

#include <cstdio>

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
    const auto application = MakeCoreApplication(argc, argv);
    SystemClock clock;
    QtEventLoop loop;
    QtSockets sockets;
    QtSerial serial;
    QtInetFactory inet;
    AmqpQueues queues;
    PrinterDevice printer;
    AplaySound sound;
    NotifySocket serviceManager;
    TerminalDialogs dialogs;

    Foundation foundation({.clock = clock,
                           .loop = loop,
                           .sockets = sockets,
                           .serial = serial,
                           .inet = inet,
                           .queues = queues,
                           .printer = printer,
                           .sound = sound,
                           .serviceManager = serviceManager,
                           .dialogs = dialogs,
                           .programFile = ProgramFile(),
                           .hasScreen = false},
                          commandLine);
    foundation.Log().SetRowListener(&PrintLogRow);
    if (const auto status = foundation.Prepare()) return *status;

    Centre centre(foundation);
    const QtSignalWatch watch(endSignals, [&centre] { centre.CloseAndShutdownEverything(); });
    centre.Start();
    return loop.Run();
}
