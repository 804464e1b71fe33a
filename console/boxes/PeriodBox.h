#pragma once

#include "console/boxes/CentreOperations.h"
#include "console/lists/Captions.h"
#include "console/lists/OperatorState.h"
#include "console/lists/WindowView.h"
#include "platform/Clock.h"
#include "translation/ServicePeriods.h"
#include "translation/Translations.h"

namespace nordkeep {

/// Asks for the time in which the events of one or several objects are only logged, and why. Around the
/// clock, and for several, it is not done without a reason. It holds their names and looks them up when the
/// answer comes.
class PeriodBox {
 public:
    struct Needs {
        Translations& translations;
        CentreOperations& centre;
        const Captions& captions;
        const Clock& clock;
        const OperatorState& state;
    };
    explicit PeriodBox(const Needs& needs) : needs_(needs) {}

    void SetView(WindowView& view) { view_ = &view; }

    /// Begins with the first object's own period when that is still to end, else with so many minutes.
    void Open(const Text& set, std::vector<Text> idCodes, int minutes = 60);
    void Close();
    bool IsOpen() const { return isOpen_; }

    const Text& Title() const { return title_; }
    /// Why no answer can be given, or what went wrong; empty when all is well.
    const Text& Notice() const { return notice_; }
    OleDate Start() const { return start_; }
    OleDate Stop() const { return stop_; }
    void SetTimes(OleDate start, OleDate stop);
    const Text& Reason() const { return reason_; }
    void SetReason(const Text& reason);
    /// The stop lies behind the start and behind now.
    bool IsPeriodEnabled() const { return stop_ > start_ && IsFromNowEnabled(); }
    bool IsFromNowEnabled() const { return stop_ > needs_.clock.Now() && (HasReason() || !IsForSeveral()); }
    bool IsAroundTheClockEnabled() const { return HasReason(); }
    /// Both times.
    void ChoosePeriod();
    /// From now until the stop.
    void ChooseFromNow();
    void ChooseAroundTheClock();

 private:
    bool HasReason() const { return !TrimBlanks(reason_).empty(); }
    bool IsForSeveral() const { return idCodes_.size() > 1; }
    void RenewNotice();
    void Set(ServicePeriod period);

    Needs needs_;
    NoWindowView noView_{};
    WindowView* view_ = &noView_;
    bool isOpen_ = false;
    Text set_{};
    std::vector<Text> idCodes_{};
    Text title_{};
    Text notice_{};
    Text reason_{};
    OleDate start_{};
    OleDate stop_{};
};

/// The object with this ID code, in any case; none when there is none.
cIDCode* FindObjectInAnyCase(const Translations& translations, TextView set, TextView idCode);

}  // namespace nordkeep
