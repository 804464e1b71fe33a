#pragma once

#include "store/EventFile.h"
#include "store/EventStore.h"
#include "tests/doubles/ManualTime.h"
#include "tests/doubles/TempFolder.h"
#include "tests/doubles/WatchedDisk.h"

#include <memory>
#include <vector>

namespace nordkeep {

/// The lists as the store tells them: the alarm texts of the rows that stand there.
class RecordingViews final : public AlarmViews {
 public:
    void UpdateAlarmLists(cAlarm& alarm) override {
        if (alarm.m_Status == kStatusRemoved) return RemoveAlarmRow(alarm);
        rows[alarm.m_FilePointer] = alarm.m_AlarmCodeToStore;
    }
    void RemoveAlarmRow(cAlarm& alarm) override { rows.erase(alarm.m_FilePointer); }
    void BeginBulkLoad() override { calls += "begin "; }
    void ShowLoadProgress(int percent) override { calls += std::to_string(percent) + " "; }
    void EndBulkLoad() override { calls += "end "; }

    std::map<std::int32_t, Text> rows{};
    Text calls{};
};

/// What was sent to other copies: event type, status and whether the record was marked as stored.
class RecordingReplica final : public AlarmReplica {
 public:
    bool SendAlarm(cAlarm& alarm, NetworkEvent event) override {
        sent += std::to_string(static_cast<int>(event)) + ":" + std::to_string(alarm.m_Status) +
                (alarm.m_IsStored ? "s " : "n ");
        return writesFiles;
    }
    bool writesFiles = true;
    Text sent{};
};

/// What the operators are told of outages.
class RecordingOutage final : public StorageAlarm {
 public:
    void RaiseStorageAlarm(const Text& text) override {
        told.push_back(text);
        if (onAlarm) onAlarm();
    }
    std::vector<Text> told{};
    std::function<void()> onAlarm{};
};

inline cAlarm AlarmAt(double days, Text text = "x", Text prio = "1") {
    cAlarm alarm;
    alarm.m_ArrivedTime = OleDate::FromDays(days);
    alarm.m_AlarmCodeToStore = std::move(text);
    alarm.m_TranslatedPrio = std::move(prio);
    return alarm;
}

/// A store on a temporary data folder, at noon of day 45356.
struct StoreWorld {
    explicit StoreWorld(StoreSettings chosen = {}, Role role = Role::StandAlone)
        : settings(std::move(chosen)) {
        folder.MakeFolders("Data\\Events");
        folder.MakeFolders("Settings");
        folder.MakeFolders("LogFiles");
        language.LoadFrom("3510=dropped:\n3511=old:\n3512=pruned:\n3513=bad:\n3518=failed:\n3519=again:\n");
        log.SetRowListener([this](const LogRow& row) { logged.push_back(row.text); });
        store = std::make_unique<EventStore>(
            StoreParts{folder.Tree(), files, language, time, log, commit, replica, views, outage, role, 1},
            settings);
    }

    /// Writes an event file as an earlier run would have left it.
    void Put(std::int32_t number, const cAlarm& alarm) const {
        folder.Write("Data\\Events\\" + EventFileNameOf(number), EventBytes(alarm, 0, 0));
    }
    /// The slices that the ticks of the program do.
    void RemoveAll() {
        while (store->UpkeepSlice()) commit.Commit();
    }
    cAlarm& StoreNew(const cAlarm& alarm) { return store->StoreNew(std::make_unique<cAlarm>(alarm)); }

    // What the disk holds is looked at behind the end of a turn.

    /// The file of a record as a restart would read it; none when it is missing or torn.
    std::optional<cAlarm> OnDisk(std::int32_t number) {
        commit.Commit();
        cAlarm alarm;
        const Text bytes = folder.Read("Data\\Events\\" + EventFileNameOf(number));
        return ReadFromDisk(bytes, 1, alarm) ? std::optional(alarm) : std::nullopt;
    }
    std::size_t FileCount() {
        commit.Commit();
        return ListFiles(folder.Resolve("Data\\Events")).size();
    }
    /// The alarm texts of all records in list order.
    Text Order() const {
        Text order;
        const EventList& events = store->Events();
        for (EventSequence at = events.Next(0); at != 0; at = events.Next(at)) {
            order += events.Find(at)->m_AlarmCodeToStore + " ";
        }
        return order;
    }
    Text Archived() {
        commit.Commit();
        return folder.Read("Data\\Archive.TXT");
    }

    StoreSettings settings;
    TempFolder folder{};
    ManualTime time{OleDate::FromDays(45356.5)};
    Settings files{folder.Tree()};
    Language language{};
    SysLog log{folder.Tree(), time};
    RecordingReplica replica{};
    RecordingViews views{};
    RecordingOutage outage{};
    std::size_t requestedCommits = 0;
    WatchedDisk disk{};
    EventCommit commit{disk, [this] { ++requestedCommits; }};
    std::vector<Text> logged{};
    std::unique_ptr<EventStore> store{};
};

}  // namespace nordkeep
