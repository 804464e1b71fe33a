#include "console/window/AlarmCommands.h"

#include "console/lists/Captions.h"
#include "console/lists/SharedCaptions.h"
#include "runtime/Fields.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace nordkeep {
namespace {

constexpr int kTextEndAll = 1021;
constexpr int kTextArchiveSelected = 1055;
constexpr int kCaptionOne = 5063;
constexpr int kCaptionSeveral = 5064;
constexpr int kCaptionCancel = 5644;
constexpr AlarmCommands::Verb kEnd = {5640, 5641};
constexpr AlarmCommands::Verb kArchive = {5642, 5643};
constexpr std::int64_t kUndoMs = 10'000;
constexpr std::int64_t kNoPriority = std::numeric_limits<std::int64_t>::max();

std::vector<std::int32_t> FilePointersOf(std::span<const Text> rowKeys) {
    std::vector<std::int32_t> filePointers;
    for (const Text& key : rowKeys) filePointers.push_back(LeadingInt32(key));
    return filePointers;
}

}  // namespace

Text AlarmCommands::About(std::span<const std::int32_t> filePointers) const {
    const cAlarm* one = nullptr;
    std::size_t count = 0;
    std::int64_t highest = kNoPriority;
    for (const std::int32_t filePointer : filePointers) {
        const cAlarm* alarm = needs_.store.FindAlarmByKey(filePointer);
        if (!alarm) continue;
        one = alarm;
        ++count;
        if (IsNumeric(alarm->m_TranslatedPrio))
            highest = std::min(highest, LeadingNumber(alarm->m_TranslatedPrio));
    }
    const Captions captions(needs_.language);
    if (count == 0) return {};
    if (count == 1) {
        const Text& object = one->m_TranslatedIDCode.empty() ? one->m_IdCode : one->m_TranslatedIDCode;
        return captions(kCaptionOne, {object, one->m_TranslatedTypeCode});
    }
    const Text number = std::to_string(count);
    if (highest == kNoPriority) return captions(kCaptionUnacked, {number});
    return captions(kCaptionSeveral, {number, std::to_string(highest)});
}

bool AlarmCommands::Asks(int text, Verb verb, Answer byDefault,
                         std::span<const std::int32_t> filePointers) const {
    const Captions captions(needs_.language);
    const Text about = About(filePointers);
    const Text behind = about.empty() ? Text() : "\r\n\r\n" + about;
    const Text yes = filePointers.size() == 1 ? captions(verb.one)
                                              : captions(verb.several, {std::to_string(filePointers.size())});
    return needs_.dialogs.Ask({.text = needs_.language.GetLanguageText(text) + behind,
                               .byDefault = byDefault,
                               .yes = yes,
                               .no = captions(kCaptionCancel)}) &&
           needs_.state.Rights().MayChange();
}

void AlarmCommands::AckAll() {
    const EventList& events = needs_.store.Events();
    std::vector<std::int32_t> open;
    for (const EventSequence at : events.Unacknowledged()) open.push_back(events.Find(at)->m_FilePointer);
    if (Asks(kTextEndAll, kEnd, Answer::No, open)) needs_.handling.EndAll(Offering());
}

// Enter ends the one that somebody works on; several take a key of their own.
void AlarmCommands::CloseSelected(std::span<const Text> rowKeys) {
    const std::vector<std::int32_t> chosen = FilePointersOf(rowKeys);
    const Answer byDefault = chosen.size() > 1 ? Answer::No : Answer::Yes;
    if (Asks(kTextEndSelected, kEnd, byDefault, chosen)) needs_.handling.EndSeveral(chosen, Offering());
}

void AlarmCommands::ArchiveSelected(std::span<const Text> rowKeys) {
    const std::vector<std::int32_t> chosen = FilePointersOf(rowKeys);
    if (Asks(kTextArchiveSelected, kArchive, Answer::No, chosen)) needs_.handling.Archive(chosen);
}

// --- Taking an end back

AlarmHandling::EndTold AlarmCommands::Offering() {
    return [this, life = std::weak_ptr<bool>(life_)](std::vector<EndedAlarm> ended) {
        if (!life.expired()) Offer(std::move(ended));
    };
}

void AlarmCommands::Offer(std::vector<EndedAlarm> ended) {
    if (ended.size() < 2) return;
    ended_ = std::move(ended);
    undoUntilMs_ = needs_.clock.MonotonicMs() + kUndoMs;
}

std::size_t AlarmCommands::UndoCount() const {
    return needs_.clock.MonotonicMs() < undoUntilMs_ ? ended_.size() : 0;
}

int AlarmCommands::UndoSeconds() const {
    const std::int64_t left = undoUntilMs_ - needs_.clock.MonotonicMs();
    return static_cast<int>(std::max<std::int64_t>(0, (left + 999) / 1000));
}

void AlarmCommands::Undo() {
    if (UndoCount() == 0 || !needs_.state.Rights().MayChange()) return;
    undoUntilMs_ = 0;
    needs_.handling.Reopen(std::exchange(ended_, {}));
}

}  // namespace nordkeep
