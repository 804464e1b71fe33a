#include "ports/HeldTelegrams.h"

#include "runtime/Json.h"

namespace nordkeep {
namespace {

constexpr TextView kWhat = "telegram";

std::string HeldJson(const HeldTelegram& held, const Text& portName) {
    JsonObject json;
    json.Add("what", kWhat).Add("port", portName).Add("telegram", held.telegram);
    json.Add("arrived", held.arrived.Days());
    return json.Take();
}

}  // namespace

std::vector<KeptTelegram> KeptTelegrams(const EventCommit& commit) {
    std::vector<KeptTelegram> kept;
    for (const WaitingEntry& waiting : commit.WaitingEntries()) {
        const std::optional<JsonMembers> members = ReadJsonObject(waiting.data);
        if (!members || members->String("what") != kWhat) continue;
        kept.push_back({.entry = waiting.id,
                        .portName = members->String("port"),
                        .telegram = members->String("telegram"),
                        .arrived = OleDate::FromDays(members->Number("arrived"))});
    }
    return kept;
}

DecodedEvent EventOfRest(const KeptTelegram& kept) {
    DecodedEvent decoded;
    decoded.event.AlarmTime = kept.arrived;
    decoded.event.ProtocolType = kOwnProtocol;
    decoded.event.ExtraText = kept.portName + " " + kept.telegram;
    decoded.event.RawAlarmCode = kept.telegram;
    return decoded;
}

void HeldTelegrams::Note(const TelegramStep& step) {
    for (const HeldTelegram& held : step.held) {
        entries_[held.key] = commit_.NoteWaiting({.kind = JournalKind::Waiting,
                                                  .port = portName_,
                                                  .text = held.telegram,
                                                  .data = HeldJson(held, portName_)});
    }
    for (const std::uint64_t key : step.settled) {
        const auto entry = entries_.extract(key);
        if (entry) commit_.NoteDone(entry.mapped());
    }
}

}  // namespace nordkeep
