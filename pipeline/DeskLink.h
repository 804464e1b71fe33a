#pragma once

#include "pipeline/OperatorDesk.h"

namespace nordkeep {

/// The operator's place for those that are built before it, since it is built on them. The place attaches
/// itself when it comes about; before that, and after its end, nobody is there to be told.
class DeskLink final : public OperatorDesk {
 public:
    void Attach(OperatorDesk& desk) { desk_ = &desk; }
    void Detach() { desk_ = nullptr; }

    void OfferSelection(const cAlarm& alarm) override {
        if (desk_) desk_->OfferSelection(alarm);
    }
    void KeepAsLatest(const cAlarm& alarm) override {
        if (desk_) desk_->KeepAsLatest(alarm);
    }
    void PopUp() override {
        if (desk_) desk_->PopUp();
    }
    void ViewComment(const cAlarm& alarm) override {
        if (desk_) desk_->ViewComment(alarm);
    }
    void ViewMap(const cAlarm& alarm) override {
        if (desk_) desk_->ViewMap(alarm);
    }
    void ShowPicture(const cAlarm& alarm, const Text& caption, bool isFollowedBySpeech) override {
        if (desk_) desk_->ShowPicture(alarm, caption, isFollowedBySpeech);
    }
    void Beep() override {
        if (desk_) desk_->Beep();
    }
    void PrintAlarmPage(const cAlarm& alarm) override {
        if (desk_) desk_->PrintAlarmPage(alarm);
    }
    void AlarmEnded(std::int32_t filePointer) override {
        if (desk_) desk_->AlarmEnded(filePointer);
    }
    void AllAlarmsEnded() override {
        if (desk_) desk_->AllAlarmsEnded();
    }
    Text UserName() const override { return desk_ ? desk_->UserName() : Text(); }

 private:
    OperatorDesk* desk_ = nullptr;
};

}  // namespace nordkeep
