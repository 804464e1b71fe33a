#include "store/EventFile.h"

#include "runtime/Fields.h"

#include <algorithm>
#include <array>
#include <bit>

namespace nordkeep {
namespace {

constexpr std::size_t kLongestText = 65535;

// The order differs from the record's own in two places: the protocol stands behind the ID code, and the
// other object's code in front of the alarm number.
constexpr std::array kTextsInFront = {&cAlarm::m_AlarmCodeToStore,
                                      &cAlarm::m_AlarmCode,
                                      &cAlarm::m_ExtraText,
                                      &cAlarm::m_TranslatedPrio,
                                      &cAlarm::m_TranslatedTypeCode,
                                      &cAlarm::m_TranslatedIDCode,
                                      &cAlarm::m_TranslatedMapName,
                                      &cAlarm::m_TranslationFile,
                                      &cAlarm::m_ResetTypeCode,
                                      &cAlarm::m_Prio,
                                      &cAlarm::m_TypeCode,
                                      &cAlarm::m_IdCode,
                                      &cAlarm::m_ProtocolType,
                                      &cAlarm::m_SIAStatus,
                                      &cAlarm::m_SIAAddress,
                                      &cAlarm::m_SIAModifier,
                                      &cAlarm::m_User};
constexpr std::array kTextsInTheMiddle = {&cAlarm::m_Originator, &cAlarm::m_PortDescription,
                                          &cAlarm::m_Customer, &cAlarm::m_LineCardNumber,
                                          &cAlarm::m_ResetIdCode};
constexpr std::array kTextsBehind = {&cAlarm::m_ObjectInformation, &cAlarm::m_RawAlarmCode, &cAlarm::m_URL};

void PutNumber(Text& out, std::uint64_t number, int bytes) {
    for (int i = 0; i < bytes; ++i) out += static_cast<char>(number >> (8 * i) & 0xFF);
}

void PutInteger(Text& out, int number) {
    PutNumber(out, static_cast<std::uint16_t>(std::clamp(number, -32768, 32767)), 2);
}

void PutLong(Text& out, std::int32_t number) {
    PutNumber(out, static_cast<std::uint32_t>(number), 4);
}

void PutDate(Text& out, OleDate date) {
    PutNumber(out, std::bit_cast<std::uint64_t>(date.Days()), 8);
}

void PutText(Text& out, TextView text) {
    text = text.substr(0, kLongestText);
    PutNumber(out, text.size(), 2);
    out += text;
}

/// Takes values from the front of a content. Behind its end everything is 0 or empty, and IsShort tells it.
class Reader {
 public:
    explicit Reader(TextView content) : rest_(content) {}

    bool IsShort() const { return isShort_; }

    std::uint64_t Number(std::size_t bytes) {
        const TextView taken = Take(bytes);
        std::uint64_t number = 0;
        for (std::size_t i = 0; i < taken.size(); ++i) {
            number |= std::uint64_t{static_cast<unsigned char>(taken[i])} << (8 * i);
        }
        return number;
    }
    int Integer() { return static_cast<std::int16_t>(Number(2)); }
    std::int32_t Long() { return static_cast<std::int32_t>(Number(4)); }
    OleDate Date() { return OleDate::FromDays(std::bit_cast<double>(Number(8))); }
    Text String() { return Text(Take(Number(2))); }

 private:
    TextView Take(std::size_t bytes) {
        if (bytes > rest_.size()) isShort_ = true;
        if (isShort_) return {};
        const TextView taken = rest_.substr(0, bytes);
        rest_.remove_prefix(bytes);
        return taken;
    }

    TextView rest_;
    bool isShort_ = false;
};

}  // namespace

Text EventBytes(const cAlarm& alarm, std::int32_t filePointer, int smallCommentSize) {
    Text out;
    out.reserve(512);
    PutLong(out, 0);
    PutInteger(out, alarm.m_Status);
    PutInteger(out, alarm.m_Repeated);
    PutDate(out, alarm.m_TimeStamp);
    PutDate(out, alarm.m_AckedTime);
    PutDate(out, alarm.m_ArrivedTime);
    for (const auto text : kTextsInFront) PutText(out, alarm.*text);
    PutInteger(out, alarm.m_SentToTorvex);
    PutText(out,
            FitWidth(alarm.m_SmallComment, static_cast<std::size_t>(std::clamp(smallCommentSize, 0, 128))));
    for (const auto text : kTextsInTheMiddle) PutText(out, alarm.*text);
    PutLong(out, alarm.m_AlarmId);
    for (const auto text : kTextsBehind) PutText(out, alarm.*text);

    Text length;
    PutLong(length, static_cast<std::int32_t>(out.size() + 1) - filePointer);
    return out.replace(0, length.size(), length);
}

std::optional<std::int32_t> ReadFromDisk(TextView content, std::int64_t filePointer, cAlarm& alarm) {
    if (filePointer < 1 || filePointer > static_cast<std::int64_t>(content.size())) return std::nullopt;
    Reader in(content.substr(static_cast<std::size_t>(filePointer - 1)));
    const std::int32_t length = in.Long();
    alarm.m_Status = in.Integer();
    alarm.m_Repeated = in.Integer();
    alarm.m_TimeStamp = in.Date();
    alarm.m_AckedTime = in.Date();
    alarm.m_ArrivedTime = in.Date();
    for (const auto text : kTextsInFront) alarm.*text = in.String();
    alarm.m_SentToTorvex = in.Integer();
    alarm.m_SmallComment = TrimBlanks(in.String());
    for (const auto text : kTextsInTheMiddle) alarm.*text = in.String();
    alarm.m_AlarmId = in.Long();
    for (const auto text : kTextsBehind) alarm.*text = in.String();
    if (in.IsShort()) return std::nullopt;
    alarm.m_FilePointer = static_cast<std::int32_t>(filePointer);
    return length;
}

bool IsBlankFile(TextView content) {
    return content.find_first_not_of('\0') == TextView::npos;
}

}  // namespace nordkeep
