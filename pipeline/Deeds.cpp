#include "pipeline/Deeds.h"

#include "runtime/Json.h"
#include "store/RecordJson.h"
#include "translation/ObjectLookup.h"
#include "translation/ServicePeriods.h"

#include <array>

namespace nordkeep {
namespace {

struct DeedText {
    JournalKind kind;
    int text;
};
constexpr DeedText kTexts[] = {{JournalKind::Comment, 3778},   {JournalKind::End, 3779},
                               {JournalKind::Archive, 3780},   {JournalKind::Service, 3781},
                               {JournalKind::AliveTest, 3782}, {JournalKind::Edit, 3783},
                               {JournalKind::Send, 3784},      {JournalKind::Silence, 3785},
                               {JournalKind::Reopen, 5062},    {JournalKind::Handover, 5480}};

/// What a deed has changed of an alarm, as it was, and what people call the alarm.
std::string BeforeJson(const cAlarm& before) {
    JsonObject json;
    json.Add("status", before.m_Status).Add("comment", before.m_SmallComment).Add("user", before.m_User);
    json.Add("objectName", before.m_TranslatedIDCode).Add("typeName", before.m_TranslatedTypeCode);
    json.Add("set", before.m_TranslationFile);
    return json.Take();
}

}  // namespace

void Deeds::NoteAlarm(JournalKind kind, const Doer& by, const cAlarm& before, const cAlarm& alarm) {
    JournalEntry entry = EntryOf(kind, alarm);
    entry.user = by.user;
    entry.station = by.station;
    entry.data = BeforeJson(before);
    commit_.Note(entry);
}

void Deeds::Note(JournalKind kind, const Doer& by, const Text& object, const Text& text, std::string data) {
    commit_.Note({.kind = kind,
                  .object = object,
                  .user = by.user,
                  .station = by.station,
                  .text = text,
                  .data = std::move(data)});
    Log(kind, by, text);
}

void Deeds::NoteService(const cTranslate& set, const cIDCode& object, int modeBefore, const Doer& by,
                        const Text& reason) {
    JsonObject json;
    json.Add("set", set.m_FileName).Add("idCode", object.m_IdCode).Add("mode", object.m_ServiceMode);
    json.Add("begin", object.m_ServicePeriodBegin.Days()).Add("end", object.m_ServicePeriodEnd.Days());
    json.Add("modeBefore", modeBefore);
    if (!reason.empty()) json.Add("reason", reason);
    commit_.Note({.kind = JournalKind::Service,
                  .object = object.m_IdCode,
                  .user = by.user,
                  .station = by.station,
                  .text = set.m_FileName,
                  .data = json.Take()});
    const Text why = reason.empty() ? Text() : ": " + reason;
    if (!by.station.empty()) Log(JournalKind::Service, by, set.m_FileName + " " + object.m_IdCode + why);
}

void Deeds::NoteHandover(const Doer& by, const Text& note, const Text& list) {
    JsonObject json;
    json.Add("list", list);
    commit_.Note({.kind = JournalKind::Handover,
                  .user = by.user,
                  .station = by.station,
                  .text = note,
                  .data = json.Take()});
    Log(JournalKind::Handover, by, note.substr(0, note.find_first_of("\r\n")));
}

void Deeds::Log(JournalKind kind, const Doer& by, const Text& subject) {
    for (const DeedText& deed : kTexts) {
        if (deed.kind != kind) continue;
        const Text who = by.user.empty() ? by.station : by.user + ", " + by.station;
        log_.WriteSysLog(language_.GetLanguageText(deed.text) + subject + " (" + who + ")",
                         LogKind::Information);
    }
}

void Deeds::TakeUpServiceModes(Translations& translations) {
    Journal* journal = commit_.EntryJournal();
    if (!journal || !journal->IsOpen() || journal->WasStoppedCleanly()) return;
    constexpr std::array kinds = {JournalKind::Service};
    journal->Read(journal->CleanStopId(), kinds, [&](const JournalRow& row) {
        const auto kept = ReadJsonObject(row.data);
        cTranslate* set = kept ? translations.Find(kept->String("set")) : nullptr;
        cIDCode* object = set ? FindExactObject(*set, kept->String("idCode")) : nullptr;
        if (!object) return;
        StoreServicePeriod(*set, *object,
                           {.mode = static_cast<int>(kept->Integer("mode")),
                            .begin = OleDate::FromDays(kept->Number("begin")),
                            .end = OleDate::FromDays(kept->Number("end"))});
    });
}

void Deeds::NoteServiceModes(const Translations& translations) {
    for (const auto& set : translations.Sets()) {
        for (const auto& object : set->m_IdCodes)
            if (object->m_ServiceMode != 0) NoteService(*set, *object, object->m_ServiceMode, {}, {});
    }
}

}  // namespace nordkeep
