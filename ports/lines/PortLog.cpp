#include "ports/lines/PortLog.h"

#include <array>

namespace nordkeep {
namespace {

constexpr int kTextClosingAtShutdown = 1024;
constexpr int kTextWith = 1027;
constexpr int kTextConnectionError = 1030;
constexpr int kTextOpened = 1041;
constexpr int kTextOpenFailed = 1096;
constexpr int kTextNoPortNumber = 3811;

constexpr int kHighestPort = 65535;

}  // namespace

void PortLog::Write(int text, const Text& tail, LogKind kind) {
    log_.WriteSysLog(language_.GetLanguageText(text) + tail, kind);
}

Text PortLog::OpeningTail(const Text& address, TextView name) const {
    return ": '" + portName_ + "' (" + Text(name) + " = " + address + ", MessageFormat = " + FormatName() +
           ") " + line_.PortDescription;
}

void PortLog::Opened(const Text& address, TextView name) {
    isFailureLogged_ = false;
    Information(kTextOpened, OpeningTail(address, name));
}

void PortLog::OpenFailed(const Text& address, const Text& error, TextView name) {
    if (isFailureLogged_) return;
    isFailureLogged_ = true;
    Failure(kTextOpenFailed, OpeningTail(address, name) + " (" + error + ")");
}

// The system would choose a number of its own for 0, which no sender could know.
bool PortLog::HasListenNumber(const Text& address, TextView name) {
    if (line_.PortNumber >= 1 && line_.PortNumber <= kHighestPort) return true;
    const Text number = std::to_string(line_.PortNumber);
    const Text highest = std::to_string(kHighestPort);
    const std::array<TextView, 2> parts = {number, highest};
    OpenFailed(address, FillPlaces(GetLanguageText(kTextNoPortNumber), parts), name);
    return false;
}

void PortLog::Closed(bool isShuttingDown, const Text& peer, EndTexts texts) {
    const Text port = NameAndDescription();
    if (isShuttingDown) return Information(kTextClosingAtShutdown, port + GetLanguageText(texts.at) + peer);
    Information(texts.subject,
                port + GetLanguageText(kTextWith) + peer + " " + GetLanguageText(kTextHasBeenClosed));
}

void PortLog::ConnectionFailed(const Text& peer, const Text& error) {
    if (isFailureLogged_) return;
    isFailureLogged_ = true;
    Failure(kTextConnectionError, NameAndDescription() + " " + peer + " (" + error + ")");
}

}  // namespace nordkeep
