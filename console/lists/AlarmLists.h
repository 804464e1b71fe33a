#pragma once

#include "console/lists/AlarmRows.h"
#include "store/AlarmViews.h"

#include <array>
#include <set>

namespace nordkeep {

/// The lists of new and of old alarms. They exist on every copy, also without a screen; until Attach they
/// have rows but no texts.
class AlarmLists final : public AlarmViews {
 public:
    /// How the lists look.
    struct Looks {
        AlarmRowLooks rows{};
        AlarmColumns unacked{};
        AlarmColumns acked{};
    };
    void Attach(Looks looks);
    /// Other colours from now on; columns stay.
    void RenewColors(AlarmColorSettings colors, bool hasToolTips);

    void UpdateAlarmLists(cAlarm& alarm) override;
    void RemoveAlarmRow(cAlarm& alarm) override;
    void BeginBulkLoad() override { ++bulkDepth_; }
    void ShowLoadProgress(int percent) override { loadPercent_ = percent; }
    void EndBulkLoad() override;

    std::size_t UnackedCount() const { return unacked_.Count(); }
    std::size_t AckedCount() const { return acked_.Count(); }
    AlarmRows& Unacked() { return unacked_; }
    AlarmRows& Acked() { return acked_; }
    /// When the oldest alarm came that nobody has commented or ended; never without one.
    OleDate OldestUnhandled() const;
    /// Seconds for priority 1, 2, and 3 and lower; 0 and less: for ever.
    using Patience = std::array<int, 3>;
    /// How many that nobody has commented or ended have waited for longer than that.
    int CountUntouched(OleDate now, const Patience& patience) const;
    /// 0 to 99 while events are being loaded, 100 else.
    int LoadPercent() const { return bulkDepth_ > 0 ? loadPercent_ : 100; }

    /// Shows what has changed, once a tick. While events are being loaded nothing is shown.
    void Flush();

 private:
    void NoteUnhandled(const cAlarm& alarm, bool isUnhandled);

    Looks looks_{};
    AlarmRows unacked_{};
    AlarmRows acked_{};
    std::set<std::pair<std::int64_t, std::int32_t>> unhandled_{};  // by the time of arrival
    std::unordered_map<std::int32_t, std::int64_t> arrivals_{};    // of the unhandled
    int bulkDepth_ = 0;
    int loadPercent_ = 0;
};

}  // namespace nordkeep
