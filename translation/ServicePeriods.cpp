#include "translation/ServicePeriods.h"

#include "runtime/Dates.h"
#include "runtime/Fields.h"
#include "translation/ObjectLookup.h"
#include "translation/SetRows.h"

namespace nordkeep {
namespace {

constexpr TextView kOutExtension = ".ServiceOut";
constexpr TextView kInExtension = ".ServiceIn";
constexpr TextView kTakenExtension = ".ServiceIn$$$";

Text ExchangeFile(const cTranslate& set, TextView extension) {
    return Text("Data\\").append(set.m_FileName).append(extension);
}

int Number(ServiceMode mode) {
    return static_cast<int>(mode);
}

bool IsMode(int mode) {
    return mode >= Number(ServiceMode::InUse) && mode <= Number(ServiceMode::LogOnly);
}

bool HasEnd(const cIDCode& object) {
    return object.m_ServiceMode == Number(ServiceMode::LogUntilEnd) ||
           object.m_ServiceMode == Number(ServiceMode::LogInPeriod);
}

/// One line of both exchange files: "ID code;mode;begin;end".
Text ExchangeLine(const cIDCode& object) {
    Text line = object.m_IdCode;
    line.append(";").append(std::to_string(object.m_ServiceMode));
    line.append(";").append(CompactTime(object.m_ServicePeriodBegin));
    return line.append(";").append(CompactTime(object.m_ServicePeriodEnd)).append("\r\n");
}

struct ExchangedPeriod {
    Text idCode{};
    ServicePeriod period{};
};

ExchangedPeriod ReadExchangeLine(TextView line) {
    const auto fields = RowFields<4>(line);
    return {.idCode = UpperCase(TrimBlanks(fields[0])),
            .period = {.mode = LeadingInt16(fields[1]),
                       .begin = ParseCompactTime(TrimBlanks(fields[2])),
                       .end = ParseCompactTime(TrimBlanks(fields[3]))}};
}

}  // namespace

ServicePeriod InUse() {
    return {.mode = Number(ServiceMode::InUse)};
}

ServicePeriod LogOnly() {
    return {.mode = Number(ServiceMode::LogOnly)};
}

ServicePeriod LogUntil(OleDate now, OleDate end) {
    return {.mode = Number(ServiceMode::LogUntilEnd), .begin = now, .end = end};
}

ServicePeriod LogBetween(OleDate begin, OleDate end) {
    return {.mode = Number(ServiceMode::LogInPeriod), .begin = begin, .end = end};
}

int MinutesOfInterval(const TranslationSettings& settings, int item) {
    return LeadingInt32(GetField(settings.ServiceIntervals, static_cast<std::size_t>(item - 1), ","));
}

ServicePeriod LogForInterval(const TranslationSettings& settings, int item, OleDate now) {
    return LogUntil(now, now.PlusMinutes(MinutesOfInterval(settings, item)));
}

bool StoreServicePeriod(cTranslate& set, cIDCode& object, const ServicePeriod& period) {
    if (!IsMode(period.mode)) return false;
    object.m_ServiceMode = period.mode;
    object.m_ServicePeriodBegin = period.begin;
    object.m_ServicePeriodEnd = period.end;
    object.m_AliveTestIntervalHasExceeded = false;
    object.m_AliveTest2IntervalHasExceeded = false;
    set.index.NoteServiceMode(object);
    return true;
}

bool ServicePeriods::Set(cTranslate& set, cIDCode& object, const ServicePeriod& period, const Doer& by) {
    if (!Change(set, object, period, by)) return false;
    if (needs_.settings.AutoExchangeServiceInfo) WriteOut(set, object);
    return true;
}

bool ServicePeriods::EndWhenOver(cTranslate& set, cIDCode& object, OleDate now) {
    if (!HasEnd(object) || now < object.m_ServicePeriodEnd) return false;
    return Set(set, object,
               {.mode = Number(ServiceMode::InUse),
                .begin = object.m_ServicePeriodBegin,
                .end = object.m_ServicePeriodEnd});
}

void ServicePeriods::TakeIn(cTranslate& set) {
    const NativePath taken = needs_.dataFolder.Resolve(ExchangeFile(set, kTakenExtension));
    RemoveFile(taken);
    // The file is taken under another name first, so that the other system can leave the next one meanwhile.
    if (!RenameFile(needs_.dataFolder.Resolve(ExchangeFile(set, kInExtension)), taken)) return;
    const Text content = ReadFile(taken).value_or(Text());
    for (const TextView line : Lines(content)) {
        const ExchangedPeriod exchanged = ReadExchangeLine(line);
        // Nothing is written out here: an answer would go back and forth between the two systems for ever.
        if (cIDCode* object = FindExactObject(set, exchanged.idCode))
            Change(set, *object, exchanged.period, {});
    }
    RemoveFile(taken);
}

bool ServicePeriods::Change(cTranslate& set, cIDCode& object, const ServicePeriod& period, const Doer& by) {
    const int modeBefore = object.m_ServiceMode;
    if (!StoreServicePeriod(set, object, period)) return false;
    needs_.views.UpdateObjectTreeEntry(set, object);
    needs_.views.RecalcAliveTestView();
    needs_.replica.SendServiceMode(set, object);
    needs_.notes.NoteService(set, object, modeBefore, by, period.reason);
    return true;
}

void ServicePeriods::WriteOut(const cTranslate& set, const cIDCode& object) const {
    AppendToFile(needs_.dataFolder.Resolve(ExchangeFile(set, kOutExtension)), ExchangeLine(object));
}

}  // namespace nordkeep
