#include "console/window/OpenWindows.h"

#include <utility>

namespace nordkeep {

void OpenWindows::Tick() {
    if (waiting_ && !needs_.state.IsRequestPending()) std::exchange(waiting_, nullptr)();
    needs_.sheet.Tick();
}

bool OpenWindows::IsPutOff(std::function<void()> again) {
    if (!needs_.state.IsRequestPending()) return false;
    waiting_ = std::move(again);
    return true;
}

bool OpenWindows::SheetIsFree() {
    if (!needs_.sheet.IsOpen() || !needs_.sheet.HasTyped()) return true;
    needs_.sheet.Raise();
    return false;
}

void OpenWindows::OpenAlarmSheet(std::int32_t filePointer, OpenedBy by) {
    if (by == OpenedBy::Itself) {
        if (needs_.sheet.IsOpen() || !MayOpenByItself()) return;
    } else if (!SheetIsFree()) {
        return;
    }
    if (IsPutOff([this, filePointer, by] { OpenAlarmSheet(filePointer, by); })) return;
    needs_.sheet.OpenAlarm(filePointer, by);
}

void OpenWindows::OpenObjectSheet(const Text& set, const Text& idCode) {
    if (!SheetIsFree()) return;
    if (IsPutOff([this, set, idCode] { OpenObjectSheet(set, idCode); })) return;
    needs_.sheet.OpenObject(set, idCode);
}

bool OpenWindows::IsOpenAlarm(std::int32_t filePointer) const {
    const cAlarm* alarm = needs_.store.FindAlarmByKey(filePointer);
    return alarm && IsUnacknowledged(*alarm);
}

void OpenWindows::OpenMap(const Text& reference, std::int32_t filePointer, OpenedBy by) {
    if (TrimBlanks(reference).empty()) return;
    if (by == OpenedBy::Itself) {
        const std::int32_t shown = needs_.map.FilePointer();
        const bool isInUse = needs_.map.IsOpen() && (shown == 0 || IsOpenAlarm(shown));
        if (isInUse || !MayOpenByItself()) return;
    }
    if (IsPutOff([this, reference, filePointer, by] { OpenMap(reference, filePointer, by); })) return;
    needs_.map.Open(reference, filePointer, by);
}

void OpenWindows::ShowPicture(std::int32_t filePointer, const Text& caption, bool isFollowedBySpeech) {
    needs_.picture.Show(filePointer, caption, isFollowedBySpeech);
}

void OpenWindows::AlarmEnded(std::int32_t filePointer) {
    needs_.picture.CloseFor(filePointer);
    needs_.sheet.Tick();
}

void OpenWindows::CloseAll() {
    waiting_ = nullptr;
    needs_.sheet.Close();
    needs_.map.Close();
    needs_.picture.Close();
}

}  // namespace nordkeep
