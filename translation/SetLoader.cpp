#include "translation/SetLoader.h"

#include "translation/ObjectLookup.h"
#include "translation/TypeCodeFile.h"

#include <unordered_map>

namespace nordkeep {
namespace {

/// The records of a set while its rows are taken in: finds the one that a row means, and puts them in the
/// order in which rows first meant them.
class ObjectPool {
 public:
    explicit ObjectPool(std::vector<std::unique_ptr<cIDCode>> objects) : objects_(std::move(objects)) {
        for (std::size_t i = 0; i < objects_.size(); ++i) {
            objects_[i]->m_IsToBeDeleted = true;
            if (objects_[i]->m_Originator.empty()) plain_.try_emplace(objects_[i]->m_IdCode, i);
        }
    }

    /// An object is found again by its whole key, so that one with a caller is a new record each time.
    cIDCode& ObjectOf(const IdCodeRow& row) {
        const auto known = plain_.find(row.key);
        const std::size_t place = known != plain_.end() ? known->second : Add(row);
        cIDCode& object = *objects_[place];
        if (object.m_IsToBeDeleted) order_.push_back(place);
        object.m_IsToBeDeleted = false;
        return object;
    }

    /// The objects met first, in order; those that no row has met stand behind them.
    std::vector<std::unique_ptr<cIDCode>> TakeInFileOrder() {
        std::vector<std::unique_ptr<cIDCode>> ordered;
        ordered.reserve(objects_.size());
        for (const std::size_t place : order_) ordered.push_back(std::move(objects_[place]));
        for (auto& object : objects_) {
            if (object) ordered.push_back(std::move(object));
        }
        return ordered;
    }

 private:
    std::size_t Add(const IdCodeRow& row) {
        auto& object = objects_.emplace_back(std::make_unique<cIDCode>());
        object->m_IdCode = row.IdCode();
        object->m_IsToBeDeleted = true;
        if (!row.HasCaller()) plain_.try_emplace(object->m_IdCode, objects_.size() - 1);
        return objects_.size() - 1;
    }

    std::vector<std::unique_ptr<cIDCode>> objects_;
    std::unordered_map<TextView, std::size_t> plain_{};  // the records own the codes
    std::vector<std::size_t> order_{};
};

}  // namespace

void SetLoader::Load(bool loadLastEvents) {
    const bool isRead = LoadObjects();
    if (isRead) LoadTypes();
    set_.index.Rebuild(set_);
    if (isRead && loadLastEvents) LoadLastEvents();
}

bool SetLoader::LoadObjects() {
    const NativePath path = needs_.dataFolder.Resolve(IdCodeFileName(set_.m_FileName));
    set_.m_FileTimeStampIDCode = FileTime(path);
    set_.m_ZeroTrim = needs_.settings.ZeroTrimObjectId ? -1 : 0;
    const std::optional<Text> content = ReadFile(path);
    if (!content) {
        // A file that an editor holds for a moment must not cost a centre its objects.
        for (auto& object : set_.m_IdCodes) object->m_IsToBeDeleted = false;
        return false;
    }
    const IdCodeFile file = ReadIdCodeFile(*content);
    static_cast<TelegramFormat&>(set_) = file.format;
    if (file.zeroTrim) set_.m_ZeroTrim = *file.zeroTrim;
    TakeRows(file.rows);
    return true;
}

void SetLoader::TakeRows(const std::vector<IdCodeRow>& rows) {
    ObjectPool pool(std::move(set_.m_IdCodes));
    for (const IdCodeRow& row : rows) TakeRow(row, pool.ObjectOf(row));
    set_.m_IdCodes = pool.TakeInFileOrder();
}

void SetLoader::TakeRow(const IdCodeRow& row, cIDCode& object) const {
    object.m_ObjectName = row.objectName;
    object.m_MapName = row.mapName;
    object.m_RBM600ExportAlarmCode = row.exportAlarmCode;
    object.m_RBM600ExportProtocol = row.exportProtocol;
    object.m_Customer = row.customer;
    object.m_MatchCLIDToAcceptMessage = row.matchCallerToAccept;
    object.m_MatchCLIDForAliveTest = row.matchCallerForAliveTest;
    object.m_ResetIdCode = row.resetIdCode;
    TakeSchedule(object, 1, object.m_AliveTestIntervalOrTimeStamps, row.schedule);
    TakeSchedule(object, 2, object.m_AliveTest2IntervalOrTimeStamps, row.schedule2);
    object.m_Originator = row.Caller();
}

void SetLoader::TakeSchedule(cIDCode& object, int test, Text& schedule, TextView newSchedule) const {
    if (schedule == newSchedule) return;
    schedule = newSchedule;
    if (!object.AliveTestIsToBeUsed(test)) {
        object.FailedFlag(test) = false;
        object.SetNextAliveTestExpirationTime(test, {});
    } else if (!object.FailedFlag(test)) {
        needs_.timers.Restart(object, test, now_, "changed by FindOrReloadTranslation");
    }
}

void SetLoader::LoadTypes() {
    const NativePath path = needs_.dataFolder.Resolve(TypeCodeFileName(set_.m_FileName));
    set_.m_FileTimeStampTypeCode = FileTime(path);
    set_.m_TypeCodes = ReadTypeCodeFile(ReadFile(path).value_or(Text()));
}

void SetLoader::LoadLastEvents() {
    const NativePath path = needs_.dataFolder.Resolve(LastEventsFileName(set_.m_FileName));
    for (const LastEventsLine& line : ReadLastEvents(ReadFile(path).value_or(Text()))) {
        if (cIDCode* object = FindExactObject(set_, line.idCode)) TakeLastEvents(line, *object);
    }
    for (auto& object : set_.m_IdCodes) StartTests(*object);
}

void SetLoader::TakeLastEvents(const LastEventsLine& line, cIDCode& object) {
    constexpr TextView kCause = "changed by FindOrReloadTranslation (LastEvents)";
    object.m_LastIncomingEvent = line.lastIncomingEvent;
    object.SetNextAliveTestExpirationTime(1, line.expiration);
    object.m_AliveTestIntervalHasExceeded = line.hasFailed;
    object.m_ServiceMode = line.serviceMode;
    object.m_ServicePeriodBegin = line.servicePeriodBegin;
    object.m_ServicePeriodEnd = line.servicePeriodEnd;
    object.SetNextAliveTestExpirationTime(2, line.expiration2);
    object.m_AliveTest2IntervalHasExceeded = line.hasFailed2;
    set_.index.NoteServiceMode(object);
    needs_.timers.LogExpiration(object, 1, kCause);
    needs_.timers.LogExpiration(object, 2, kCause);
}

void SetLoader::StartTests(cIDCode& object) const {
    // Both tests hang on the first one's schedule: an object with only a second schedule is left alone here,
    // and one with only a first gets an expiration of test 2 that nothing reads.
    if (!object.AliveTestIsToBeUsed(1)) return;
    StartTest(object, 1, needs_.settings.ResetAliveTestTimers);
    StartTest(object, 2, needs_.settings.ResetAliveTest2Timers);
}

void SetLoader::StartTest(cIDCode& object, int test, bool isWanted) const {
    if (!isWanted && !object.GetNextAliveTestExpirationTime(test).IsNever()) return;
    needs_.timers.Restart(object, test, now_, "changed by FindOrReloadTranslation (ResetAliveTestTimers)");
    object.FailedFlag(test) = false;
}

}  // namespace nordkeep
