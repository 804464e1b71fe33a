#include "tools/Peers.h"
#include "tools/SendCommand.h"
#include "tools/cli/Terminal.h"

#include <csignal>

int main(int argc, char** argv) {
    using namespace nordkeep::tools;
    std::signal(SIGPIPE, SIG_IGN);
    SendCommand command;
    CLI::App app;
    PrepareTool(app, "nordkeep-send");
    DeclareSend(app, command);
    if (const auto status = ReadWords(app, argc, argv)) return *status;
    if (!command.demo.empty()) return FeedDemo(command.demo);
    if (!command.options.replay.empty()) return Replay(command.options);
    const Play play = FindPlay(command.options.telegram.format);
    return play ? play(command.options) : Send(command.options);
}
