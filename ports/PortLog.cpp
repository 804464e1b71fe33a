#include "ports/PortLog.h"

namespace nordkeep {
namespace {

constexpr int kTextOpened = 1041;
constexpr int kTextOpenFailed = 1096;

}  // namespace

void PortLog::Write(int text, const Text& tail, LogKind kind) {
    log_.WriteSysLog(language_.GetLanguageText(text) + tail, kind);
}

Text PortLog::OpeningTail(const Text& address) const {
    return ": '" + portName_ + "' (PortSettings = " + address + ", MessageFormat = " + FormatName() + ") " +
           line_.PortDescription;
}

void PortLog::Opened(const Text& address) {
    isFailureLogged_ = false;
    Information(kTextOpened, OpeningTail(address));
}

void PortLog::OpenFailed(const Text& address, const Text& error) {
    if (isFailureLogged_) return;
    isFailureLogged_ = true;
    Failure(kTextOpenFailed, OpeningTail(address) + " (" + error + ")");
}

}  // namespace nordkeep
