#include "ports/lines/PortLog.h"

namespace nordkeep {
namespace {

constexpr int kTextClosingAtShutdown = 1024;
constexpr int kTextWith = 1027;
constexpr int kTextConnectionError = 1030;
constexpr int kTextOpened = 1041;
constexpr int kTextOpenFailed = 1096;

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
