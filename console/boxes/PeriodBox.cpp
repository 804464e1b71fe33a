#include "console/boxes/PeriodBox.h"

#include "console/lists/SharedCaptions.h"

namespace nordkeep {
namespace {

constexpr int kCaptionTitle = 3353;
constexpr int kCaptionWrongTimes = 3757;
constexpr int kCaptionObjectGone = 3758;

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

void PeriodBox::Open(const Text& set, const Text& idCode) {
    const cIDCode* object = FindObjectInAnyCase(needs_.translations, set, idCode);
    if (!object) return;
    set_ = set;
    idCode_ = idCode;
    title_ = needs_.captions(kCaptionTitle) + " - " +
             (object->m_ObjectName.empty() ? object->m_IdCode : object->m_ObjectName);
    notice_.clear();
    const OleDate now = needs_.clock.Now();
    const bool hasPeriod = object->m_ServicePeriodEnd > now && object->m_ServicePeriodBegin > OleDate();
    start_ = WholeMinute(hasPeriod ? object->m_ServicePeriodBegin : now);
    stop_ = WholeMinute(hasPeriod ? object->m_ServicePeriodEnd : now.PlusMinutes(60));
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
    notice_ = IsPeriodEnabled() ? Text() : needs_.captions(kCaptionWrongTimes);
}

void PeriodBox::ChoosePeriod() {
    if (isOpen_ && IsPeriodEnabled()) Set(LogBetween(start_, stop_));
}

void PeriodBox::ChooseFromNow() {
    if (isOpen_ && IsFromNowEnabled()) Set(LogUntil(needs_.clock.Now(), stop_));
}

void PeriodBox::Set(const ServicePeriod& period) {
    cTranslate* set = needs_.translations.Find(set_);
    cIDCode* object = FindObjectInAnyCase(needs_.translations, set_, idCode_);
    const OperatorRights rights = needs_.state.Rights();
    if (!rights.MayChange() || !set || !object) {
        notice_ = needs_.captions(rights.isConnectionLost ? kCaptionNoContact : kCaptionObjectGone);
        view_->Refresh();
        return;
    }
    needs_.centre.SetService(*set, *object, period);
    Close();
}

}  // namespace nordkeep
