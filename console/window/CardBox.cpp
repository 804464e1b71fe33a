#include "console/window/CardBox.h"

#include "console/lists/ObjectList.h"
#include "console/lists/SharedCaptions.h"
#include "runtime/Dates.h"
#include "runtime/ObjectFiles.h"
#include "translation/ObjectLookup.h"

namespace nordkeep {
namespace {

constexpr int kCaptionTitle = 5620;
constexpr int kCaptionObject = 5621;
constexpr int kCaptionOpen = 5622;
constexpr int kCaptionPast = 5623;
constexpr int kCaptionSupervision = 5624;
constexpr int kTextCode = 5625;
constexpr int kTextSet = 5626;
constexpr int kTextCustomer = 5627;
constexpr int kTextPhone = 5628;
constexpr int kTextMap = 5629;
constexpr int kTextLastSign = 5630;
constexpr int kTextTest = 5631;
constexpr int kTextNoTests = 5632;
constexpr int kTextGone = 5639;
constexpr int kTextReason = 5647;
constexpr int kTextUnit = 609;
constexpr std::size_t kMostLines = 20;

}  // namespace

cIDCode* CardBox::Object() const {
    cTranslate* set = Set();
    return set ? FindExactObject(*set, idCode_) : nullptr;
}

void CardBox::Open(const Text& set, const Text& idCode) {
    set_ = set;
    idCode_ = idCode;
    isOpen_ = true;
    instruction_.clear();
    reason_.clear();
    isReasonKnown_ = false;
    isInstructionToLoad_ = true;
    const Text why = WhyNot(needs_.captions, needs_.source.Readiness());
    past_ = {.heading = needs_.captions(kCaptionPast), .lines = {}};
    if (!why.empty()) past_.lines = {why};
    if (why.empty()) {
        needs_.source.Ask(*this, ++number_, HistoryQuery{.exactObject = idCode_});
    }
    Renew();
    view_->Show(OpenedBy::Operator);
}

void CardBox::Close() {
    isOpen_ = false;
    needs_.source.Forget(*this);
    view_->Close();
}

Text CardBox::Title() const {
    const cIDCode* object = Object();
    const bool hasName = object && !object->m_ObjectName.empty();
    return needs_.captions(kCaptionTitle, {hasName ? object->m_ObjectName : idCode_});
}

// On a client this waits for the server, and only one may: then it is tried again.
void CardBox::LoadInstruction() {
    if (!isInstructionToLoad_ || needs_.state.IsRequestPending()) return;
    isInstructionToLoad_ = false;
    const Text path = InformationFile(set_, idCode_);
    Text text = path.empty() ? Text() : needs_.files.ReadTextFile(path);
    instruction_ = std::move(text);
    view_->Refresh();
}

CardBox::Part CardBox::Facts(const cTranslate& set, const cIDCode& object) const {
    Part part{.heading = needs_.captions(kCaptionObject), .lines = {}};
    const auto add = [&](int text, const Text& value) {
        if (!value.empty()) part.lines.push_back(needs_.captions(text, {value}));
    };
    add(kTextCode, object.m_IdCode);
    add(kTextSet, set.m_FileName);
    add(kTextCustomer, object.m_Customer);
    add(kTextPhone, object.m_Originator);
    add(kTextMap, object.m_MapName);
    return part;
}

CardBox::Part CardBox::Supervision(const cIDCode& object) const {
    Part part{.heading = needs_.captions(kCaptionSupervision),
              .lines = {ServiceWord(needs_.captions, object)}};
    if (object.m_ServiceMode != 0 && !reason_.empty()) part.lines.push_back(reason_);
    if (!object.m_LastIncomingEvent.IsNever())
        part.lines.push_back(needs_.captions(kTextLastSign, {GeneralDate(object.m_LastIncomingEvent)}));
    bool isSupervised = false;
    for (const int test : {1, 2}) {
        if (!object.AliveTestIsToBeUsed(test)) continue;
        isSupervised = true;
        part.lines.push_back(needs_.captions(
            kTextTest, {std::to_string(test),
                        object.ReadableAliveTestIntervalOrTime(test, needs_.captions.FromFile(kTextUnit)),
                        GeneralDate(object.GetNextAliveTestExpirationTime(test))}));
    }
    if (object.m_AliveTestIntervalHasExceeded) part.lines.push_back(needs_.captions(kCaptionTestFailed));
    if (object.m_AliveTest2IntervalHasExceeded) part.lines.push_back(needs_.captions(kCaptionTest2Failed));
    if (!isSupervised) part.lines.push_back(needs_.captions(kTextNoTests));
    return part;
}

CardBox::Part CardBox::OpenAlarms() const {
    Part part{.heading = needs_.captions(kCaptionOpen), .lines = {}};
    const EventList& events = needs_.store.Events();
    const auto& open = events.Unacknowledged();
    for (auto at = open.rbegin(); at != open.rend() && part.lines.size() < kMostLines; ++at) {
        const cAlarm& alarm = *events.Find(*at);
        if (alarm.m_IdCode != idCode_ || alarm.m_TranslationFile != set_) continue;
        part.lines.push_back(GeneralDate(alarm.m_ArrivedTime) + "   " + alarm.m_TranslatedTypeCode + "   " +
                             alarm.m_AlarmCodeToStore + "   " + alarm.m_SmallComment);
    }
    return part;
}

bool CardBox::Renew() {
    std::vector<Part> parts;
    const cTranslate* set = Set();
    const cIDCode* object = Object();
    if (object) {
        parts = {Facts(*set, *object), Supervision(*object), OpenAlarms(), past_};
    } else {
        parts = {{.heading = idCode_, .lines = {needs_.captions(kTextGone)}}, past_};
    }
    if (parts == parts_) return false;
    parts_ = std::move(parts);
    return true;
}

void CardBox::TakePage(std::int32_t number, const HistoryPage& page) {
    if (number != number_) return;
    for (const HistoryEntry& entry : page.entries) {
        if (entry.kind == "service" && entry.set == set_ && !isReasonKnown_) TakeReason(entry);
        if (entry.kind != "event" || entry.set != set_ || past_.lines.size() >= kMostLines) continue;
        past_.lines.push_back(GeneralDate(entry.time) + "   " +
                              (entry.typeName.empty() ? entry.type : entry.typeName) + "   " + entry.text);
    }
    if (Renew()) view_->Refresh();
}

// The newest entry tells of the present mode.
void CardBox::TakeReason(const HistoryEntry& entry) {
    isReasonKnown_ = true;
    const Text by = DoerText(needs_.captions, entry);
    if (entry.comment.empty() && by.empty()) return;
    reason_ = needs_.captions(
        kTextReason, {entry.comment.empty() ? Text("-") : entry.comment, by, GeneralDate(entry.time)});
}

void CardBox::Tick() {
    if (!isOpen_) return;
    LoadInstruction();
    if (isOpen_ && Renew()) view_->Refresh();
}

bool CardBox::HasMap() const {
    const cIDCode* object = Object();
    return object && !object->m_MapName.empty() && needs_.state.Rights().MayOperate();
}

void CardBox::OpenSheet() {
    if (MayComment()) needs_.windows.OpenObjectSheet(set_, idCode_);
}

void CardBox::OpenMap() {
    if (HasMap()) needs_.windows.OpenMap(Object()->m_MapName, 0, OpenedBy::Operator);
}

void CardBox::AskService() {
    if (MayChange()) needs_.period.Open(set_, {idCode_});
}

void CardBox::ResetAliveTests() {
    if (MayChange()) needs_.centre.ResetAliveTests(*Set(), *Object());
}

void CardBox::ShowHistory() {
    needs_.history.OpenFor(idCode_);
}

}  // namespace nordkeep
