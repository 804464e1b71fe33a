#pragma once

#include "console/boxes/CommentBox.h"
#include "console/boxes/MapBox.h"
#include "console/boxes/PictureBox.h"

namespace nordkeep {

/// The at most one sheet, map and alarm picture, and what may open by itself: an alarm never pushes aside
/// what an operator works on, and in a flood of alarms nothing opens at all, since the list shows them
/// anyway.
class OpenWindows final : public OperatorWindows {
 public:
    struct Needs {
        CommentBox& sheet;
        MapBox& map;
        PictureBox& picture;
        const EventStore& store;
        const OperatorState& state;
    };
    /// The sheet asks for windows, too: it may be built behind this.
    explicit OpenWindows(const Needs& needs) : needs_(needs) {}

    void OpenAlarmSheet(std::int32_t filePointer, OpenedBy by) override;
    void OpenObjectSheet(const Text& set, const Text& idCode) override;
    void OpenMap(const Text& reference, std::int32_t filePointer, OpenedBy by) override;
    void ShowPicture(std::int32_t filePointer, const Text& caption, bool isFollowedBySpeech) override;
    void AlarmEnded(std::int32_t filePointer) override;

    /// At the end of the program, and when a client's user logs out: nothing is asked.
    void CloseAll();
    /// One tick of the display's timer: opens what had to wait, and looks after the sheet.
    void Tick();

 private:
    bool MayOpenByItself() const { return !needs_.state.IsQuestionUp() && !needs_.state.IsFlood(); }
    /// An alarm of that key still waits in the list of new alarms.
    bool IsOpenAlarm(std::int32_t filePointer) const;
    /// True when the sheet can be turned to something else; else it has come to the front.
    bool SheetIsFree();
    /// True while a request is under way, when files look missing: then it is tried again behind it, and only
    /// the latest wish counts.
    bool IsPutOff(std::function<void()> again);

    Needs needs_;
    std::function<void()> waiting_{};
};

}  // namespace nordkeep
