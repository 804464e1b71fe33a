#pragma once

#include "tools/Telegrams.h"

#include <string>
#include <vector>

namespace nordkeep::tools {

struct SendOptions {
    std::vector<std::string> targets{};  // connection n goes to target n, and round again
    TelegramOptions telegram{};
    std::string raw{};                // bytes sent instead of a telegram
    std::vector<std::string> play{};  // telegrams sent one after the other, instead of made ones
    int glue = 1;                     // telegrams in one write
    bool isCut = false;               // only the first half of each telegram is sent
    int slowMs = 0;                   // pause between the bytes of a telegram
    long count = 1;                   // over all connections together
    double rate = 0;                  // telegrams a second over all connections; 0 as fast as replies come
    int connections = 1;
    int timeoutMs = 5000;       // wait for a reply
    bool numbersCodes = false;  // the last digits of the code count up
    bool isQuiet = false;       // only the summary
    bool isSilent = false;      // as modem: no answers
    bool hasNoEcho = false;     // as modem
    std::string caller{};       // as modem: rings with this number
    std::string replay{};       // a traffic file that is played
    std::string port{};         // whose part of it, by description
    bool isFast = false;        // without its pauses
};

/// The code of a telegram; counted up when the options say so.
std::string NumberedCode(const SendOptions& options, long number);

class Line;

/// The exit status for a line that could not be opened.
int OpeningStatus(const Line& line);

/// Sends and prints what came back; the result is the program's exit status: 0 when everything that has a
/// reply was acknowledged.
int Send(const SendOptions& options);

}  // namespace nordkeep::tools
