#pragma once

#include "pipeline/DispatchSettings.h"
#include "pipeline/OperatorDesk.h"
#include "pipeline/Resets.h"
#include "pipeline/TorvexLink.h"
#include "pipeline/outputs/Outputs.h"
#include "runtime/Role.h"
#include "runtime/SysLog.h"
#include "store/AlarmText.h"
#include "store/EventStore.h"

#include <memory>
#include <span>

namespace nordkeep {

/// Decides what happens to a record once the intake has completed it: a table of steps in fixed order. Each
/// step runs whatever happened in the one before.
class Dispatcher {
 public:
    struct Needs {
        const FileTree& dataFolder;
        const Language& language;
        const Clock& clock;
        SysLog& log;
        const AlarmText& text;
        const DispatchSettings& settings;
        const DeskSettings& deskSettings;
        const TorvexSettings& torvexSettings;
        EventStore& store;
        Resets& resets;
        TorvexLink& torvex;
        OperatorDesk& desk;
        Outputs& outputs;
    };
    explicit Dispatcher(const Needs& needs) : needs_(needs) {}

    void DispatchEvent(std::unique_ptr<cAlarm> alarm);
    /// An alarm that the server has dispatched comes to this client: what it opens, shows and sounds at this
    /// place, and the place's own relay, printers and alarm file. What is stored, forwarded and logged in
    /// common is the server's.
    void PresentAtDesk(cAlarm& alarm);
    /// Whether the settings pass such an alarm on to Torvex.
    bool IsToBePassedToTorvex(const cAlarm& alarm) const;

    /// Sends the alarms that still wait for it to Torvex: those whose delay has passed. To be called every
    /// few seconds.
    void SendWaitingToTorvex(OleDate now);

 private:
    /// The record, owned here until it is stored, and what the steps tell each other.
    struct Dispatch {
        std::unique_ptr<cAlarm> owned;
        cAlarm& alarm;
        bool wantsSound = false;
        bool wantsPicture = false;
        bool isFollowedBySpeech = false;
    };
    enum class Runs { Always, OnlyForNewAlarms };
    struct Step {
        const char* name;
        Runs runs;
        void (Dispatcher::*run)(Dispatch&);
    };
    static const Step kSteps[];
    static const Step kDeskSteps[];

    void Run(std::span<const Step> steps, Dispatch& dispatch);

    void DetectRepeat(Dispatch& dispatch);
    void SilenceAlarm(Dispatch& dispatch);
    void NoteAcknowledgeTime(Dispatch& dispatch);
    void WriteAlarmLine(Dispatch& dispatch);
    void SendToTorvex(Dispatch& dispatch);
    void SendToComCall(Dispatch& dispatch);
    void SendToMessageQueue(Dispatch& dispatch);
    void MarkSpeech(Dispatch& dispatch);
    void Store(Dispatch& dispatch);
    void WriteAlarmLog(Dispatch& dispatch);
    void WriteTypeLog(Dispatch& dispatch);
    void WriteObjectLog(Dispatch& dispatch);
    void OfferSelection(Dispatch& dispatch);
    void KeepAsLatest(Dispatch& dispatch);
    void PopUp(Dispatch& dispatch);
    void ViewCommentAndMap(Dispatch& dispatch);
    void DecidePicture(Dispatch& dispatch);
    void DecideSound(Dispatch& dispatch);
    void ShowPicture(Dispatch& dispatch);
    void PlaySound(Dispatch& dispatch);
    void OperateRelay(Dispatch& dispatch);
    void PrintLine(Dispatch& dispatch);
    void PrintPage(Dispatch& dispatch);

    /// The text of an alarm for Torvex, with its line feed.
    Text TorvexLine(const cAlarm& alarm) const;

    Needs needs_;
    AppendingFile alarmLog_{needs_.dataFolder};
};

}  // namespace nordkeep
