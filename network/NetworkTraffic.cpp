#include "network/NetworkTraffic.h"

#include "network/messages/MessageNumbers.h"
#include "runtime/Dates.h"
#include "runtime/Fields.h"

namespace nordkeep {
namespace {

constexpr std::size_t kLengthDigits = 5;

}  // namespace

void NetworkTraffic::Configure(bool isOn, Role role) {
    isOn_ = isOn;
    folder_ = PlaceOfLog(LogKind::Information, role == Role::Client).folder;
}

void NetworkTraffic::WriteTrafficLine(std::uint8_t number, std::size_t payloadLength,
                                      TrafficDirection direction) const {
    if (!isOn_) return;
    const OleDate now = clock_.Now();
    const Text length = Digits(static_cast<std::int64_t>(payloadLength), kLengthDigits);
    Text line = FormatDate(now, "YY-MM-DD") + " " + FormatDate(now, "HH:NN:SS") + "  ";
    line += direction == TrafficDirection::Received ? "<-" : "->";
    line += " " + length.substr(length.size() - kLengthDigits) + " " + MessageName(number) + "\r\n";
    const Text file = folder_ + "Traffic_" + FormatDate(now, "YYYY-MM-DD") + ".LOG";
    AppendToFile(dataFolder_.Resolve(file), line);
}

}  // namespace nordkeep
