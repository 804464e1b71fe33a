#include "console/boxes/SimulationBox.h"

#include "runtime/Fields.h"

namespace nordkeep {
namespace {

constexpr TextView kMark = "SIMULERAD";
constexpr int kHundred = 100;
constexpr int kPerTurn = 10;

Text Marked(TextView text) {
    return text.empty() ? Text(kMark) : Text(kMark).append(" ").append(text);
}

int NumberOrNone(TextView text) {
    const TextView digits = TrimBlanks(text);
    return IsNumeric(digits) ? LeadingInt16(digits) : -1;
}

}  // namespace

SimulationBox::SimulationBox(const Needs& needs) : needs_(needs), random_(needs.randomSeed) {}

void SimulationBox::Open() {
    isOpen_ = true;
    view_->Show(OpenedBy::Operator);
}

void SimulationBox::Close() {
    if (!isOpen_) return;
    isOpen_ = false;
    view_->Close();
}

std::vector<Text> SimulationBox::PortNames() const {
    std::vector<Text> names;
    for (const SimulatedPort& port : needs_.ports.PortsToSimulate()) names.push_back(port.description);
    return names;
}

void SimulationBox::Raise(const SimulatedAlarm& wanted) {
    const std::vector<SimulatedPort> ports = needs_.ports.PortsToSimulate();
    const bool hasPort = wanted.port >= 1 && wanted.port <= ports.size();
    needs_.intake.HandleIncomingEvent({.AlarmTime = needs_.clock.Now(),
                                       .ProtocolType = kOwnProtocol,
                                       .DefaultPrio = NumberOrNone(wanted.prio),
                                       .DefaultType = NumberOrNone(wanted.type),
                                       .DefaultAlarmCode = wanted.alarmCode,
                                       .ExtraText = Marked(wanted.extraText),
                                       .PortObject = hasPort ? ports[wanted.port - 1].event : nullptr,
                                       .TranslationNumberToUse = ProtocolOf(wanted.protocol),
                                       .RawAlarmCode = wanted.alarmCode});
}

void SimulationBox::RaiseHundred() {
    if (left_ > 0) return;
    left_ = kHundred;
    RaiseSome();
}

void SimulationBox::RaiseSome() {
    for (int i = 0; i < kPerTurn && left_ > 0; ++i, --left_) RaiseRandom();
    if (left_ < 1) return;
    needs_.loop.Post([this, isAlive = isAlive_] {
        if (*isAlive) RaiseSome();
    });
}

// The sets are looked up anew for each event: the turn before may have reloaded them.
void SimulationBox::RaiseRandom() {
    std::vector<cTranslate*> sets;
    for (const auto& set : needs_.translations.Sets()) {
        if (!set->m_IdCodes.empty() && !set->m_TypeCodes.empty()) sets.push_back(set.get());
    }
    if (sets.empty()) return Raise({.alarmCode = std::to_string(random_() % 10000)});
    cTranslate& set = *sets[random_() % sets.size()];
    const cIDCode& object = *set.m_IdCodes[random_() % set.m_IdCodes.size()];
    const cTypeCode& type = set.m_TypeCodes[random_() % set.m_TypeCodes.size()];
    needs_.intake.HandleIncomingEvent(
        {.AlarmTime = needs_.clock.Now(),
         .ProtocolType = kOwnProtocol,
         .DefaultAlarmCode = SyntheticTelegram(set, object.m_IdCode, type.m_TypeCode),
         .ExtraText = Text(kMark),
         .SpecificTranslationToUse = &set});
}

}  // namespace nordkeep
