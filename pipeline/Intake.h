#pragma once

#include "pipeline/Dispatcher.h"
#include "pipeline/EventIntake.h"
#include "pipeline/IntakeRun.h"
#include "pipeline/IntakeSettings.h"
#include "pipeline/ParkedEvents.h"
#include "pipeline/Resets.h"
#include "pipeline/XmlFieldMap.h"
#include "translation/ObjectLookup.h"
#include "translation/ObjectReplica.h"
#include "translation/SilenceAlarm.h"
#include "translation/Translations.h"

#include <memory>

namespace nordkeep {

/// Builds one record from each event, finds its object and texts, keeps the object's alive tests, and hands
/// the finished record to the dispatcher or parks it. Calls itself for the restore of an alive test.
class Intake final : public EventIntake, public SilenceAlarm {
 public:
    struct Needs {
        const FileTree& dataFolder;
        const Settings& files;
        const Language& language;
        const Clock& clock;
        const IntakeSettings& settings;
        const TranslationSettings& translationSettings;
        const LookupRules& lookup;
        const AliveTestTimers& timers;
        Translations& translations;
        ObjectViews& views;
        ObjectReplica& replica;
        EventStore& store;
        Resets& resets;
        ParkedEvents& parked;
        Dispatcher& dispatcher;
        XmlFieldMap* fieldMap = nullptr;  // none on a copy without gateways
    };
    explicit Intake(const Needs& needs) : needs_(needs) {}

    void HandleIncomingEvent(const IncomingEvent& event) override;
    void HandleSignOfLife(const IncomingEvent& event) override;
    void RaiseSilenceAlarm(cTranslate& set, cIDCode& object, int test, OleDate now) override;

    /// What an event would become.
    struct Trial {
        std::unique_ptr<cAlarm> alarm{};
        bool isFound = false;  // there is an object
        bool isInService = false;
        bool mayBeParked = false;  // it may be a reset that comes before its alarm
    };
    /// Goes the road of an event up to its disposition: nothing is stored, sent, shown, fed or reset.
    Trial Try(const IncomingEvent& event);

 private:
    void Build(IntakeRun& run);
    void Translate(IntakeRun& run, bool alwaysApplyDefaultPrio);
    void WalkSet(IntakeRun& run, cTranslate& set, bool alwaysApplyDefaultPrio);
    void TakeObject(IntakeRun& run, cTranslate& set, cIDCode& object);
    void ReadObjectInformation(cAlarm& alarm) const;
    void NoteObjectHeard(IntakeRun& run, cTranslate& set, cIDCode& object);
    void FinishTexts(IntakeRun& run);
    void ApplyFieldMap(IntakeRun& run, TextView moment);
    void FeedAliveTests(IntakeRun& run);
    void FeedTest2(IntakeRun& run);
    void RaiseRestore(IntakeRun& run, cTranslate& set, cIDCode& object);
    void RaiseSyntheticRestore(const IntakeRun& run, cTranslate& set, const cIDCode& object,
                               const Text& type);
    void ShowObject(cTranslate& set, cIDCode& object);
    void HandOver(IntakeRun& run);

    Needs needs_;
};

}  // namespace nordkeep
