#include "network/HistoryService.h"

#include "runtime/Json.h"

namespace nordkeep {
namespace {

constexpr int kLowestLevel = 1;
constexpr std::int32_t kRefused = 0;  // no question has this number
constexpr std::size_t kLongestNote = 4000;
constexpr std::size_t kLongestList = 100'000;

}  // namespace

HistoryService::HistoryService(ClientSlots& slots, HistoryWork& work, Deeds& deeds)
    : work_(work), deeds_(deeds) {
    for (int slot = 0; slot < kSlotCount; ++slot) {
        askers_.at(static_cast<std::size_t>(slot)).slots = &slots;
        askers_.at(static_cast<std::size_t>(slot)).slot = slot;
    }
}

HistoryService::~HistoryService() {
    for (Asker& asker : askers_) work_.Forget(asker);
}

void HistoryService::Asker::TakePage(std::int32_t number, const HistoryPage& page) {
    slots->SendTo(slot, Message::History, HistoryAnswerPayload({number, page}));
}

void HistoryService::Asker::TakeReport(std::int32_t number, const AlarmFigures& figures) {
    slots->SendTo(slot, Message::Report, ReportAnswerPayload({number, figures}));
}

void HistoryService::Search(int slot, int level, TextView payload) {
    const auto question = ReadHistoryQuestion(payload);
    if (!question) return;
    Asker& asker = askers_.at(static_cast<std::size_t>(slot));
    if (level < kLowestLevel) return asker.TakePage(kRefused, {.isEnd = true, .isReadable = false});
    work_.Ask(asker, question->number, question->query);
}

void HistoryService::Report(int slot, int level, TextView payload) {
    const auto question = ReadWholePayload<ReportQuestion>(payload);
    if (!question) return;
    Asker& asker = askers_.at(static_cast<std::size_t>(slot));
    if (level >= kLowestLevel) return work_.Ask(asker, question->number, question->span);
    AlarmFigures refused;
    refused.isReadable = false;
    asker.TakeReport(kRefused, refused);
}

void HistoryService::TakeHandover(int level, const Doer& by, TextView payload) {
    const auto given = ReadWholePayload<HandoverGiven>(payload);
    if (!given || level < kLowestLevel) return;
    deeds_.NoteHandover(by, given->note.substr(0, kLongestNote), given->list.substr(0, kLongestList));
}

void HistoryService::Forget(int slot) {
    work_.Forget(askers_.at(static_cast<std::size_t>(slot)));
}

}  // namespace nordkeep
