#include "network/ClientSession.h"

#include <utility>

namespace nordkeep {
namespace {

constexpr int kTextCannotConnect = 1061;
constexpr int kTextClientEnds = 1065;
/// A server that does not answer message 30 within this time does not know what it asks for.
constexpr int kExtensionsMs = 1000;
constexpr TextView kMainSettings = "Settings\\Nordkeep.INI";

Text VersionText(std::int32_t version) {
    return "Server protocol version is " + std::to_string(version) + ", but we support version " +
           std::to_string(kProtocolVersion);
}

}  // namespace

ClientStart StartClient(ServerLink& link, const Language& language, SysLog& log) {
    if (!link.ConnectToServer()) return {.failure = language.GetLanguageText(kTextCannotConnect)};
    log.WriteSysLog(link.ConnectionText(), LogKind::Information);
    const std::int32_t version = link.RequestVersion().value_or(0);
    if (version != kProtocolVersion) return {.failure = VersionText(version)};
    const Text settings = link.RequestTextFile(kMainSettings).value_or(Text());
    if (settings.empty()) return {.failure = "Could not get the server INI-file!"};
    return {.serverSettings = settings};
}

void ClientSession::SetState(LinkState state) {
    state_ = state;
    needs_.screen.ShowLinkState(state);
}

void ClientSession::FetchAll() {
    const NetworkSettings& settings = needs_.settings;
    if (!needs_.mirror.RequestInitialData()) return;
    if (!settings.AutoLoginUserName.empty() && !settings.AutoLoginPassword.empty())
        needs_.replica.RequestLogin({settings.AutoLoginUserName, settings.AutoLoginPassword});
    if (needs_.mirror.RequestAllEvents()) AskForExtensions();
}

// Behind all else, so that a server that takes it amiss has given everything before.
void ClientSession::AskForExtensions() {
    askedMs_ = -1;
    if (std::exchange(isPlainNext_, false)) return;
    if (needs_.link.SendToServer(Message::Extensions, PayloadOf(LongNumber{kHighestExtension}))) askedMs_ = 0;
}

void ClientSession::Tick(int elapsedMs) {
    if (state_ == LinkState::Connected && !needs_.link.IsConnectionLost()) {
        if (IsAsking()) askedMs_ += elapsedMs;
        if (askedMs_ > kExtensionsMs || needs_.mirror.Server().isTold) askedMs_ = -1;
        return KeepAlive(elapsedMs);
    }
    if (state_ == LinkState::Connected) return NoteLoss();
    if (state_ != LinkState::Lost) return;
    lostMs_ += elapsedMs;
    if (lostMs_ >= needs_.settings.NetworkReconnectInterval) ReconnectNow();
}

void ClientSession::KeepAlive(int elapsedMs) {
    const int interval = needs_.settings.NetworkKeepAliveInterval;
    if (interval <= 0) return;
    keepAliveMs_ += elapsedMs;
    if (keepAliveMs_ < interval) return;
    keepAliveMs_ = 0;
    needs_.link.SendToServer(Message::KeepAlive);
}

void ClientSession::NoteLoss() {
    if (needs_.settings.NetworkReconnectInterval <= 0) return EndProgram();
    lostMs_ = 0;
    // What cannot be kept up to date any more must not be read as the state of things.
    const bool isTold = needs_.mirror.Server().isTold;
    needs_.mirror.ConnectionStarts();
    SetState(LinkState::Lost);
    // It closes on messages that it does not know: without them it serves as ever.
    isPlainNext_ = IsAsking() && !isTold;
    askedMs_ = -1;
    if (isPlainNext_) ReconnectNow();
}

void ClientSession::EndProgram() {
    if (state_ == LinkState::Ended) return;
    SetState(LinkState::Ended);
    needs_.log.WriteSysLog(needs_.language.GetLanguageText(kTextClientEnds), LogKind::Failure);
    needs_.screen.EndProgram({});
}

// While a try waits, ticks and clicks come in here; the state keeps them out.
void ClientSession::ReconnectNow() {
    if (state_ != LinkState::Lost) return;
    SetState(LinkState::Connecting);
    const bool isBack = Reconnect();
    if (state_ != LinkState::Connecting) return;
    lostMs_ = 0;
    SetState(isBack ? LinkState::Connected : LinkState::Lost);
}

// A server that gives no answer is not back yet; only one that gives another version ends the client.
bool ClientSession::Reconnect() {
    if (!needs_.link.ConnectToServer()) return false;
    needs_.log.WriteSysLog(needs_.link.ConnectionText(), LogKind::Information);
    const std::int32_t version = needs_.link.RequestVersion().value_or(0);
    if (version != kProtocolVersion) {
        needs_.log.WriteSysLog(VersionText(version), LogKind::Failure);
        if (needs_.link.IsConnectionLost()) return false;
        SetState(LinkState::Ended);
        needs_.screen.EndProgram(VersionText(version));
        return false;
    }
    FetchAll();
    return !needs_.link.IsConnectionLost();
}

}  // namespace nordkeep
