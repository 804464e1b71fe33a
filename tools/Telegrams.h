#pragma once

#include <string>

namespace nordkeep::tools {

/// What to send; texts are bytes of the line.
struct TelegramOptions {
    std::string format = "robofon";  // one of FormatNames
    std::string code = "10000103";   // ID code and type as the object's set cuts them
    std::string text{};              // free text, text format only
    char kind = 'P';                 // robofon: P or T
    char classCode = '0';
    int receiver = 1;  // 0 to 7
    int line = 1;      // 0 to 7
    bool isFollowedBySpeech = false;
    bool hasWrongCheck = false;
    bool isUnwrapped = false;     // text: a line feed ends the message instead of STX and ETX
    int sequence = 1;             // googol: 0 to 127; dc09: 0 to 9999, of the first telegram
    int number = 0;               // dc09: of this telegram, from 0
    std::string key{};            // dc09: bytes; empty: not encrypted
    std::string extended{};       // dc09: what stands behind the data
    int clockSeconds = 0;         // dc09: by which the clock is wrong
    bool hasNoTime = false;       // dc09
    bool hasBinaryCheck = false;  // dc09
};

/// The formats that can be sent, separated by blanks.
std::string FormatNames();

/// One telegram; empty for an unknown format.
std::string MakeTelegram(const TelegramOptions& options, const std::string& code);
/// True when a port answers this format.
bool HasReply(const std::string& format);
/// True for an answer that says the event is stored.
bool IsAcknowledged(const std::string& format, const std::string& reply);
/// True when the port hangs up behind its answer.
bool ClosesBehindReply(const std::string& format);
/// A telegram as a person reads it, control characters by name.
std::string Readable(const std::string& bytes);
/// The bytes of hexadecimal pairs, blanks between them allowed; stops at anything else.
std::string FromHex(const std::string& text);

}  // namespace nordkeep::tools
