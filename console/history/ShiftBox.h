#pragma once

#include "console/history/HistoryBox.h"
#include "console/print/ShiftList.h"

namespace nordkeep {

/// One shift hands over to the next: what is open, how it went, and what there is to say. Signed over, it is
/// an entry of the journal.
class ShiftBox final : private HistoryTaker {
 public:
    struct Needs {
        const ShiftList& list;
        HistorySource& source;
        const Captions& captions;
        const Clock& clock;
        PrintOutput& printer;
    };
    explicit ShiftBox(const Needs& needs) : needs_(needs) {}
    ~ShiftBox() override { needs_.source.Forget(*this); }
    ShiftBox(const ShiftBox&) = delete;
    ShiftBox& operator=(const ShiftBox&) = delete;

    void SetView(WindowView* view) { view_ = view ? view : &noView_; }
    const Captions& Words() const { return needs_.captions; }

    /// With the lists as they are now, and the figures as soon as they come.
    void Open();
    int Hours() const { return hours_; }
    /// 1 to 24.
    void SetHours(int hours);
    const std::vector<ShiftList::Part>& Parts() const { return parts_; }
    const Text& Note() const { return note_; }
    void SetNote(const Text& note) { note_ = note; }
    void SignOver();
    /// It stands in the journal: a second time is not meant.
    bool IsSignedOver() const { return isSignedOver_; }
    const Text& Notice() const { return notice_; }
    PrintDocument Document() const;
    void Print() { needs_.printer.Preview(Document()); }

 private:
    void TakePage(std::int32_t, const HistoryPage&) override {}
    void TakeReport(std::int32_t number, const AlarmFigures& figures) override;
    void Ask();

    Needs needs_;
    NoWindowView noView_{};
    WindowView* view_ = &noView_;
    std::vector<ShiftList::Part> parts_{};  // the figures stand first
    Text note_{};
    Text notice_{};
    int hours_ = 8;
    std::int32_t number_ = 0;
    bool isSignedOver_ = false;
};

}  // namespace nordkeep
