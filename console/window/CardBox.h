#pragma once

#include "console/boxes/CentreOperations.h"
#include "console/boxes/PeriodBox.h"
#include "console/history/HistoryBox.h"
#include "console/lists/OperatorWindows.h"
#include "runtime/DataFiles.h"
#include "store/EventStore.h"

namespace nordkeep {

/// All that is known of one object, with what can be done about it. It holds the object's names and looks it
/// up when needed.
class CardBox final : private HistoryTaker {
 public:
    struct Needs {
        Translations& translations;
        const EventStore& store;
        DataFiles& files;
        const Captions& captions;
        const Clock& clock;
        const OperatorState& state;
        CentreOperations& centre;
        OperatorWindows& windows;
        PeriodBox& period;
        HistoryBox& history;
        HistorySource& source;
    };
    explicit CardBox(const Needs& needs) : needs_(needs) {}
    ~CardBox() override { needs_.source.Forget(*this); }
    CardBox(const CardBox&) = delete;
    CardBox& operator=(const CardBox&) = delete;

    void SetView(WindowView* view) { view_ = view ? view : &noView_; }
    const Captions& Words() const { return needs_.captions; }

    void Open(const Text& set, const Text& idCode);
    bool IsOpen() const { return isOpen_; }
    void Close();
    Text Title() const;

    struct Part {
        Text heading{};
        std::vector<Text> lines{};
        friend bool operator==(const Part&, const Part&) = default;
    };
    /// What it is, how it is supervised, what is open, what was.
    const std::vector<Part>& Parts() const { return parts_; }
    /// The instruction for its alarms.
    const Text& Instruction() const { return instruction_; }

    // What can be done, each as long as it may be.
    bool MayComment() const { return Object() && needs_.state.Rights().MayOperate(); }
    bool MayChange() const { return Object() && needs_.state.Rights().MayChange(); }
    bool HasMap() const;
    void OpenSheet();
    void OpenMap();
    void AskService();
    void ResetAliveTests();
    void ShowHistory();

    /// To be called several times a second: shows what has changed.
    void Tick();

 private:
    void TakePage(std::int32_t number, const HistoryPage& page) override;
    void TakeReport(std::int32_t, const AlarmFigures&) override {}
    cTranslate* Set() const { return needs_.translations.Find(set_); }
    cIDCode* Object() const;
    void LoadInstruction();
    void TakeReason(const HistoryEntry& entry);
    Part Facts(const cTranslate& set, const cIDCode& object) const;
    Part Supervision(const cIDCode& object) const;
    Part OpenAlarms() const;
    bool Renew();

    Needs needs_;
    NoWindowView noView_{};
    WindowView* view_ = &noView_;
    Text set_{};
    Text idCode_{};
    Text instruction_{};
    std::vector<Part> parts_{};
    Part past_{};
    Text reason_{};  // of its service, from the journal
    std::int32_t number_ = 0;
    bool isOpen_ = false;
    bool isInstructionToLoad_ = false;
    bool isReasonKnown_ = false;
};

}  // namespace nordkeep
