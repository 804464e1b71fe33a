#pragma once

#include "pipeline/OperatorDesk.h"

#include <vector>

namespace nordkeep {

/// Writes down what an operator's place is told, in order.
class RecordingDesk final : public OperatorDesk {
 public:
    void OfferSelection(const cAlarm&) override { calls.push_back("selection"); }
    void KeepAsLatest(const cAlarm&) override { calls.push_back("latest"); }
    void PopUp() override { calls.push_back("popup"); }
    void ViewComment(const cAlarm&) override { calls.push_back("comment"); }
    void ViewMap(const cAlarm&) override { calls.push_back("map"); }
    void ShowPicture(const cAlarm&, const Text& caption, bool) override {
        calls.push_back("picture " + caption);
    }
    void Beep() override { calls.push_back("beep"); }
    void PrintAlarmPage(const cAlarm&) override { calls.push_back("page"); }
    void AlarmEnded(std::int32_t filePointer) override { ended.push_back(filePointer); }
    void AllAlarmsEnded() override { ++timesAllEnded; }
    Text UserName() const override { return user; }

    std::vector<Text> calls{};
    std::vector<std::int32_t> ended{};
    int timesAllEnded = 0;
    Text user{};
};

}  // namespace nordkeep
