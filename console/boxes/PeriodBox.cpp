#include "console/boxes/PeriodBox.h"

#include "console/lists/SharedCaptions.h"

namespace nordkeep {
namespace {

constexpr int kCaptionTitle = 3353;
constexpr int kCaptionWrongTimes = 3757;
constexpr int kCaptionObjectGone = 3758;
constexpr int kCaptionSeveral = 3788;
constexpr int kCaptionReasonNeeded = 5101;

/// Seconds are never chosen.
OleDate WholeMinute(OleDate date) {
    CivilTime civil = date.Civil();
    civil.second = 0;
    return OleDate::FromCivil(civil);
}

}  // namespace

cIDCode* FindObjectInAnyCase(const Translations& translations, TextView set, TextView idCode) {
    const cTranslate* known = translations.Find(set);
    if (!known) return nullptr;
    for (const auto& object : known->m_IdCodes) {
        if (EqualsNoCase(object->m_IdCode, idCode)) return object.get();
    }
    return nullptr;
}

void PeriodBox::Open(const Text& set, std::vector<Text> idCodes, int minutes) {
    const cIDCode* object =
        idCodes.empty() ? nullptr : FindObjectInAnyCase(needs_.translations, set, idCodes.front());
    if (!object) return;
    const Text name = object->m_ObjectName.empty() ? object->m_IdCode : object->m_ObjectName;
    const Text several = needs_.captions(kCaptionSeveral, {std::to_string(idCodes.size())});
    title_ = needs_.captions(kCaptionTitle) + " - " + (idCodes.size() == 1 ? name : several);
    set_ = set;
    idCodes_ = std::move(idCodes);
    reason_.clear();
    const OleDate now = needs_.clock.Now();
    const bool hasPeriod = object->m_ServicePeriodEnd > now && object->m_ServicePeriodBegin > OleDate();
    start_ = WholeMinute(hasPeriod ? object->m_ServicePeriodBegin : now);
    stop_ = WholeMinute(hasPeriod ? object->m_ServicePeriodEnd : now.PlusMinutes(minutes));
    RenewNotice();
    isOpen_ = true;
    view_->Show(OpenedBy::Operator);
}

void PeriodBox::Close() {
    if (!isOpen_) return;
    isOpen_ = false;
    view_->Close();
}

void PeriodBox::SetTimes(OleDate start, OleDate stop) {
    start_ = start;
    stop_ = stop;
    RenewNotice();
}

void PeriodBox::SetReason(const Text& reason) {
    reason_ = reason;
    RenewNotice();
}

void PeriodBox::RenewNotice() {
    const bool isTimeWrong = stop_ <= start_ || stop_ <= needs_.clock.Now();
    notice_.clear();
    if (isTimeWrong) notice_ = needs_.captions(kCaptionWrongTimes);
    if (!isTimeWrong && IsForSeveral() && !HasReason()) notice_ = needs_.captions(kCaptionReasonNeeded);
}

void PeriodBox::ChoosePeriod() {
    if (isOpen_ && IsPeriodEnabled()) Set(LogBetween(start_, stop_));
}

void PeriodBox::ChooseFromNow() {
    if (isOpen_ && IsFromNowEnabled()) Set(LogUntil(needs_.clock.Now(), stop_));
}

void PeriodBox::ChooseAroundTheClock() {
    if (isOpen_ && IsAroundTheClockEnabled()) Set(LogOnly());
}

void PeriodBox::Set(ServicePeriod period) {
    period.reason = TrimBlanks(reason_);
    cTranslate* set = needs_.translations.Find(set_);
    const OperatorRights rights = needs_.state.Rights();
    std::vector<cIDCode*> objects;
    for (const Text& idCode : idCodes_) {
        if (cIDCode* object = FindObjectInAnyCase(needs_.translations, set_, idCode))
            objects.push_back(object);
    }
    if (!rights.MayChange() || !set || objects.size() < idCodes_.size()) {
        notice_ = needs_.captions(rights.isConnectionLost ? kCaptionNoContact : kCaptionObjectGone);
        view_->Refresh();
        return;
    }
    for (cIDCode* object : objects) needs_.centre.SetService(*set, *object, period);
    Close();
}

}  // namespace nordkeep
