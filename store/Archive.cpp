#include "store/Archive.h"

#include "platform/Files.h"
#include "runtime/Dates.h"

#include <array>
#include <variant>

namespace nordkeep {
namespace {

constexpr TextView kFile = "Data\\Archive.TXT";
constexpr TextView kLineEnd = "\r\n";
// A disk that is full for days must not fill the memory as well; the oldest lines go first.
constexpr std::size_t kLargestBacklog = 16 << 20;

using Field = std::variant<Text cAlarm::*, int cAlarm::*, OleDate cAlarm::*>;

// The order is the archive's own: the protocol stands in front of the priority, and the alarm number in front
// of the other object's code.
constexpr std::array kFields = {Field(&cAlarm::m_Status),
                                Field(&cAlarm::m_Repeated),
                                Field(&cAlarm::m_TimeStamp),
                                Field(&cAlarm::m_AckedTime),
                                Field(&cAlarm::m_ArrivedTime),
                                Field(&cAlarm::m_AlarmCodeToStore),
                                Field(&cAlarm::m_AlarmCode),
                                Field(&cAlarm::m_ExtraText),
                                Field(&cAlarm::m_ProtocolType),
                                Field(&cAlarm::m_TranslatedPrio),
                                Field(&cAlarm::m_TranslatedTypeCode),
                                Field(&cAlarm::m_TranslatedIDCode),
                                Field(&cAlarm::m_TranslatedMapName),
                                Field(&cAlarm::m_TranslationFile),
                                Field(&cAlarm::m_ResetTypeCode),
                                Field(&cAlarm::m_Prio),
                                Field(&cAlarm::m_TypeCode),
                                Field(&cAlarm::m_IdCode),
                                Field(&cAlarm::m_SIAStatus),
                                Field(&cAlarm::m_SIAAddress),
                                Field(&cAlarm::m_SIAModifier),
                                Field(&cAlarm::m_User),
                                Field(&cAlarm::m_SentToTorvex),
                                Field(&cAlarm::m_SmallComment),
                                Field(&cAlarm::m_Originator),
                                Field(&cAlarm::m_PortDescription),
                                Field(&cAlarm::m_Customer),
                                Field(&cAlarm::m_LineCardNumber),
                                Field(&cAlarm::m_AlarmId),
                                Field(&cAlarm::m_ResetIdCode),
                                Field(&cAlarm::m_ObjectInformation),
                                Field(&cAlarm::m_RawAlarmCode),
                                Field(&cAlarm::m_URL)};

Text ValueOf(const cAlarm& alarm, const Field& field) {
    if (const auto* text = std::get_if<Text cAlarm::*>(&field)) return alarm.**text;
    if (const auto* number = std::get_if<int cAlarm::*>(&field)) return std::to_string(alarm.**number);
    return GeneralDate(alarm.*std::get<OleDate cAlarm::*>(field));
}

}  // namespace

Text ArchiveLine(const cAlarm& alarm, const StoreSettings& settings, const AlarmText& texts) {
    Text line;
    if (settings.ArchiveLogFileTimeFormat.empty()) {
        for (const Field& field : kFields) line.append(ValueOf(alarm, field)).append(";");
    } else {
        line = texts.BuildAlarmText({settings.ArchiveLogFileTimeFormat, settings.AlarmLogFileDateFormat,
                                     settings.AlarmLogFileTimeFormat},
                                    alarm);
    }
    return line.append(kLineEnd);
}

NativePath Archive::Path() const {
    return dataFolder_.Resolve(kFile);
}

void Archive::Keep(TextView lines) {
    backlog_ += lines;
    if (backlog_.size() <= kLargestBacklog) return;
    const std::size_t end = backlog_.find(kLineEnd, backlog_.size() - kLargestBacklog);
    backlog_.erase(0, end == Text::npos ? end : end + kLineEnd.size());
}

}  // namespace nordkeep
