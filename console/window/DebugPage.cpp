#include "console/window/DebugPage.h"

#include "runtime/Dates.h"

#include <algorithm>

namespace nordkeep {
namespace {

constexpr int kMutedBehindSendMs = 10000;
constexpr int kMutedBehindTickMs = 60000;
constexpr int kTextMutingBegins = 3660;
constexpr int kTextMutingEnds = 3661;
constexpr TextView kDebugFile = "Data\\Debug.TXT";

}  // namespace

Text DebugList::Cell(int row, int column) const {
    const Text* line = At(row);
    return line && column == 0 ? Printable(*line) : Text();
}

void DebugPage::SetPorts(std::vector<DebugPort> ports) {
    ports_ = std::move(ports);
    Choose(ports_.empty() ? -1 : 0);
}

void DebugPage::Watch(std::size_t port, bool isWatched) {
    if (port < ports_.size()) ports_[port].isWatched = isWatched;
}

void DebugPage::Choose(int port) {
    const int chosen = port >= 0 && port < static_cast<int>(ports_.size()) ? port : -1;
    if (chosen == chosen_) return;
    EndMuting();
    chosen_ = chosen;
}

void DebugPage::IgnoreResponse(bool isOn) {
    if (!isOn) return EndMuting();
    if (isIgnoring_ || chosen_ < 0) return;
    isIgnoring_ = true;
    sinceTickingMs_ = kMutedBehindTickMs;
    LogMuting(kTextMutingBegins);
}

void DebugPage::EndMuting() {
    if (!isIgnoring_) return;
    isIgnoring_ = false;
    sinceSendMs_ = sinceTickingMs_ = 0;
    LogMuting(kTextMutingEnds);
}

void DebugPage::LogMuting(int text) const {
    if (chosen_ < 0) return;
    const DebugPort& port = ports_[static_cast<std::size_t>(chosen_)];
    needs_.log.WriteSysLog(needs_.captions(text, {port.name, port.description}), LogKind::Oddity);
}

void DebugPage::Send(TextView message) {
    if (chosen_ < 0 || message.empty()) return;
    if (isIgnoring_) sinceSendMs_ = kMutedBehindSendMs;
    const Text name = ports_[static_cast<std::size_t>(chosen_)].name;
    needs_.lines.SendOnPort(name, BytesOfReadable(message));
}

bool DebugPage::Save() const {
    Text text = "Nordkeep Debug File, version " NORDKEEP_VERSION "\r\n";
    for (int row = 0; row < list_.RowCount(); ++row) text.append(list_.Cell(row, 0)).append("\r\n");
    return WriteFile(needs_.dataFolder.Resolve(kDebugFile), text);
}

void DebugPage::NoteTraffic(TextView bytes, TrafficDirection direction, TextView port) {
    const auto isWatched = [port](const DebugPort& known) {
        return known.isWatched && known.description == port;
    };
    if (std::ranges::none_of(ports_, isWatched)) return;
    const TextView arrow = direction == TrafficDirection::Sent ? " -> " : " <- ";
    list_.AddLine(FormatDate(needs_.clock.Now(), "HH:NN:SS") + " " + Text(port) + Text(arrow) +
                  ReadableBytes(bytes, isHex_));
}

void DebugPage::Tick(int elapsedMs) {
    list_.Flush();
    if (!isIgnoring_) return;
    sinceSendMs_ = std::max(0, sinceSendMs_ - elapsedMs);
    sinceTickingMs_ = std::max(0, sinceTickingMs_ - elapsedMs);
    if (sinceSendMs_ == 0 && sinceTickingMs_ == 0) EndMuting();
}

Text DebugPage::MutedPort() const {
    return isIgnoring_ && chosen_ >= 0 ? ports_[static_cast<std::size_t>(chosen_)].name : Text();
}

int DebugPage::MutedSeconds() const {
    return isIgnoring_ ? (std::max(sinceSendMs_, sinceTickingMs_) + 999) / 1000 : 0;
}

}  // namespace nordkeep
