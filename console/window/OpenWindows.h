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
        EventLoop& loop;
        /// An operator is being asked something.
        std::function<bool()> isQuestionUp;
        /// More alarms arrive than can be handled.
        std::function<bool()> isFlood;
        std::function<bool()> isRequestPending = [] { return false; };
    };
    explicit OpenWindows(const Needs& needs);

    void OpenAlarmSheet(std::int32_t filePointer, OpenedBy by) override;
    void OpenObjectSheet(const Text& set, const Text& idCode) override;
    void OpenMap(const Text& reference, std::int32_t filePointer, OpenedBy by) override;
    void ShowPicture(std::int32_t filePointer, const Text& caption, bool isFollowedBySpeech) override;
    void AlarmEnded(std::int32_t filePointer) override;

    /// At the end of the program, and when a client's user logs out: nothing is asked.
    void CloseAll();

 private:
    bool MayOpenByItself() const { return !needs_.isQuestionUp() && !needs_.isFlood(); }
    /// An alarm of that key still waits in the list of new alarms.
    bool IsOpenAlarm(std::int32_t filePointer) const;
    /// True when the sheet can be turned to something else; else it has come to the front.
    bool SheetIsFree();
    /// True while a request is under way, when files look missing: then it is tried again behind it, and only
    /// the latest wish counts.
    bool IsPutOff(std::function<void()> again);
    void Tick();

    Needs needs_;
    std::unique_ptr<Timer> tick_;
    std::function<void()> waiting_{};
};

}  // namespace nordkeep
