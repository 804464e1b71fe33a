// Costs of single steps on the road of a telegram.

#include "ports/formats/Robofon.h"
#include "store/AlarmText.h"
#include "store/EventFile.h"
#include "tests/doubles/TempFolder.h"
#include "translation/ObjectLookup.h"

#include <benchmark/benchmark.h>

namespace nordkeep {
namespace {

Text Telegram() {
    return EncodeRobofon({.timeOrFirstPart = "2405171345", .status = '\x11', .id = "10000103"});
}

cAlarm SampleAlarm() {
    cAlarm alarm;
    alarm.m_TimeStamp = alarm.m_ArrivedTime = OleDate::FromCivil({2024, 3, 5, 7, 8, 9});
    alarm.m_AlarmCodeToStore = alarm.m_AlarmCode = alarm.m_RawAlarmCode = "10000103";
    alarm.m_ProtocolType = "Robofon";
    alarm.m_TranslatedPrio = "1";
    alarm.m_TranslatedTypeCode = "Intrusion";
    alarm.m_TranslatedIDCode = "The bakery";
    alarm.m_PortDescription = "Receiver (1:1)";
    return alarm;
}

void DecodeRobofon(benchmark::State& state) {
    const Text telegram = Telegram();
    for (auto _ : state) benchmark::DoNotOptimize(NextRobofonStep(telegram, {}, {}));
}
BENCHMARK(DecodeRobofon);

void FindObjectAmong(benchmark::State& state) {
    cTranslate set;
    for (int i = 0; i < state.range(0); ++i) {
        set.m_IdCodes.push_back(std::make_unique<cIDCode>());
        set.m_IdCodes.back()->m_IdCode = Digits(i, 6);
    }
    set.index.Rebuild(set);
    const Text code = Digits(state.range(0) / 2, 6);
    for (auto _ : state) benchmark::DoNotOptimize(MatchObject(set, {code, "", {}}, {}));
}
BENCHMARK(FindObjectAmong)->Arg(10)->Arg(1000)->Arg(100'000);

void ScanObjects(benchmark::State& state) {
    std::vector<std::unique_ptr<cIDCode>> objects;
    const OleDate now = OleDate::FromCivil({2024, 3, 5, 7, 8, 9});
    for (int i = 0; i < state.range(0); ++i) {
        objects.push_back(std::make_unique<cIDCode>());
        objects.back()->m_AliveTestIntervalOrTimeStamps = "60";
        objects.back()->SetNextAliveTestExpirationTime(1, now.PlusMinutes(1));
    }
    for (auto _ : state) {
        int failed = 0;
        for (const auto& object : objects) {
            failed += object->AliveTestIsToBeUsed(1) && object->AliveTestHasExpired(1, now);
        }
        benchmark::DoNotOptimize(failed);
    }
}
BENCHMARK(ScanObjects)->Arg(100'000)->Unit(benchmark::kMillisecond);

void FormatAlarmLine(benchmark::State& state) {
    const TempFolder folder;
    const Language language;
    const AlarmText text(folder.Tree(), language);
    const cAlarm alarm = SampleAlarm();
    const AlarmFormat format{
        "[Date];[Time];[ProtocolType];[TrPrio];[TrIDCode];[TrTypeCode];[AlarmCodeToStore];[Originator]",
        "Short Date", "Long Time"};
    for (auto _ : state) benchmark::DoNotOptimize(text.BuildAlarmText(format, alarm));
}
BENCHMARK(FormatAlarmLine);

void MakeEventFile(benchmark::State& state) {
    const cAlarm alarm = SampleAlarm();
    for (auto _ : state) benchmark::DoNotOptimize(EventBytes(alarm, 0, 0));
}
BENCHMARK(MakeEventFile);

void ReadEventFile(benchmark::State& state) {
    const Text bytes = EventBytes(SampleAlarm(), 0, 0);
    for (auto _ : state) {
        cAlarm alarm;
        benchmark::DoNotOptimize(ReadFromDisk(bytes, 1, alarm));
    }
}
BENCHMARK(ReadEventFile);

}  // namespace
}  // namespace nordkeep
