#include "tests/fuzz/Targets.h"

#include "ports/Robofon.h"
#include "ports/TextTelegram.h"
#include "runtime/Dates.h"
#include "runtime/IniText.h"
#include "runtime/Language.h"
#include "store/EventFile.h"

#include <cstdlib>

namespace nordkeep {
namespace {

/// A decoder consumes no more than there is, and comes to an end.
template <class NextStep>
void Drain(TextView received, NextStep next) {
    while (!received.empty()) {
        const TelegramStep step = next(received);
        if (step.consumed == 0) return;
        if (step.consumed > received.size()) std::abort();
        received.remove_prefix(step.consumed);
    }
}

void RunRobofon(TextView input) {
    Drain(input, [](TextView rest) { return NextRobofonStep(rest, {.TimeStampFromRBM = true}, {}); });
}

void RunText(TextView input) {
    for (const bool isWrapped : {true, false}) {
        const TextTelegramSettings settings{
            .WrapWithSTXETX = isWrapped,
            .cleaning = {
                .DOS7bitASCIItoISOLatin1 = true, .DOS8bitASCIItoISOLatin1 = true, .AdjustTabAndSpace = true}};
        Drain(input, [&](TextView rest) { return NextTextStep(rest, settings, {}); });
    }
}

void RunIni(TextView input) {
    IniText ini{Text(input)};
    for (const Text& key : ini.Keys("General")) ini.Value("General", key);
    const Text changed = ini.WithValue("General", "Key", "value");
    if (IniText(changed).Value("General", "Key") != "value") std::abort();
    ReadIniFromText(input, "General", "Key", "");
    ListIniKeysFromText(input, "General");
}

// Whatever can be read is written again to the same bytes.
void RunEventFile(TextView input) {
    cAlarm alarm;
    if (!ReadFromDisk(input, 1, alarm)) return;
    cAlarm again;
    const Text bytes = EventBytes(alarm, 0, 0);
    if (!ReadFromDisk(bytes, 1, again) || EventBytes(again, 0, 0) != bytes) std::abort();
    GeneralDate(alarm.m_TimeStamp);
}

void RunLanguage(TextView input) {
    Language language;
    language.LoadFrom(input);
    language.GetLanguageText(1);
}

void RunDates(TextView input) {
    ParseCompactTime(input);
    ParseDateTime(input);
    FormatDate(OleDate::FromDays(45000.5), input);
}

std::vector<FuzzTarget> LocalTargets() {
    return {
        {"robofon",
         &RunRobofon,
         {"\x02  P2405171345\x29"
          "012340001\x03"
          "\x49",
          "\x07"}},
        {"text",
         &RunText,
         {"\x02"
          "1234 Larm hall\x03",
          "1234 x\r\n"}},
        {"ini", &RunIni, {"[General]\r\nKey=value\r\n; remark\r\n[Other]\r\nA=\"b\"\r\n"}},
        {"event", &RunEventFile, {EventBytes(cAlarm{.m_AlarmCode = "1234", .m_IdCode = "12"}, 0, 3)}},
        {"language", &RunLanguage, {"0=English\r\n1=One=two\r\n"}},
        {"dates", &RunDates, {"20240510070809", "2024-05-10 07:08:09", "YYYY-MM-DD \"x\" \\y HH:MM"}},
    };
}

}  // namespace

const std::vector<FuzzTarget>& FuzzTargets() {
    static const std::vector<FuzzTarget> targets = [] {
        std::vector<FuzzTarget> all = LocalTargets();
        for (FuzzTarget& target : NetworkTargets()) all.push_back(std::move(target));
        return all;
    }();
    return targets;
}

}  // namespace nordkeep
