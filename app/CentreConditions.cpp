#include "app/CentreConditions.h"

#include "translation/ServicePeriods.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>

namespace nordkeep {
namespace {

using enum ConditionKind;

// A time server moves the clock by less.
constexpr std::int64_t kJumpMs = 5000;
// A jump is over at once; for so long it is told.
constexpr std::int64_t kJumpToldMs = 15 * 60'000;
constexpr int kServiceRounds = 5;
constexpr int kEndToldMinutes = 15;

/// What the state of a line is to whoever sits at the window; none for one that is as it should be.
std::optional<ConditionKind> KindOf(LineState state) {
    switch (state) {
        case LineState::Failed:
            return LineFailed;
        case LineState::Unusable:
            return LineUnusable;
        case LineState::Disabled:
            return LineShut;
        case LineState::Held:
            return LineHeld;
        case LineState::Muted:
            return LineMuted;
        case LineState::Quiet:
            return LineQuiet;
        case LineState::Open:
        case LineState::WaitsForCaller:
        case LineState::Connected:
        // Its own settings say so, and the lists of lines show it.
        case LineState::Waiting:
            break;
    }
    return std::nullopt;
}

}  // namespace

// From here on: a clock may be set between the start and the first look at it.
CentreConditions::CentreConditions(const Needs& needs) : needs_(needs), clockOffsetMs_(ClockOffsetMs()) {}

void CentreConditions::Renew() {
    WatchClock();
    CountService();
    lines_.clear();
    for (const auto& port : needs_.portList.Ports()) lines_.push_back(port->Figures());
    FactList facts;
    AddLines(facts);
    AddStorage(facts);
    AddOutputs(facts);
    AddPlace(facts);
    DateFacts(facts, facts_, needs_.clock.Now());
    facts_ = std::move(facts);
}

bool CentreConditions::HasFailedForLong(const LineFigures& line) const {
    const std::int64_t ms = needs_.clock.Now().Milliseconds() - line.since.Milliseconds();
    // A clock that was set back says nothing about how long it is.
    return ms < 0 || ms >= needs_.settings.LineFailureBannerTime * std::int64_t{1000};
}

void CentreConditions::AddLines(FactList& facts) const {
    if (needs_.ports.arePortsDisabled) facts.push_back({.kind = LinesDisabled});
    if (needs_.ports.isNoPortOpen) facts.push_back({.kind = NoLineOpen});
    if (needs_.ports.arePortsDisabled) return;
    // A client has the lines of its server, which tells of them.
    if (lines_.empty() && !needs_.server) facts.push_back({.kind = NoLine});
    for (const LineFigures& line : lines_) {
        const auto kind = KindOf(line.state);
        if (!kind || (*kind == LineFailed && !HasFailedForLong(line))) continue;
        facts.push_back({.kind = *kind, .name = line.description, .since = line.since});
    }
}

void CentreConditions::AddStorage(FactList& facts) const {
    if (const std::size_t unsaved = needs_.store.UnsavedCount(); unsaved > 0) {
        facts.push_back({.kind = EventsUnsaved, .count = static_cast<int>(unsaved)});
    }
    if (needs_.commit.HasJournalFailed()) facts.push_back({.kind = JournalFailed});
}

void CentreConditions::AddOutputs(FactList& facts) const {
    const bool isClient = needs_.server != nullptr;
    if (!isClient && needs_.torvex.IsConfigured() && !needs_.torvex.IsConnected()) {
        facts.push_back({.kind = PeerLost, .name = "Torvex"});
    }
    if (!isClient && needs_.mqtt.IsConfigured() && !needs_.mqtt.IsUp()) {
        facts.push_back({.kind = PeerLost, .name = "MQTT " + needs_.mqtt.Address()});
    }
    for (const Text& name : needs_.outputs.LostPeers()) {
        // A client has the settings of this line, and its server tends it.
        const bool isServers = isClient && name.starts_with("ComCall ");
        if (!isServers) facts.push_back({.kind = PeerLost, .name = name});
    }
    if (needs_.paper.HasFailed()) facts.push_back({.kind = PeerLost, .name = needs_.paper.Name()});
    if (needs_.outputs.HasSoundFailed()) facts.push_back({.kind = SoundDead});
}

// A client has the settings of its server's ways out, too.
std::vector<OutputState> CentreConditions::Outputs() const {
    std::vector<OutputState> states = needs_.outputs.States();
    if (const auto waiting = needs_.paper.WaitingCount())
        states.push_back({.name = "spooler", .isUp = !needs_.paper.HasFailed(), .waiting = *waiting});
    if (needs_.server) {
        std::erase_if(states, [](const OutputState& state) { return state.name == "comcall"; });
        return states;
    }
    if (needs_.torvex.IsConfigured())
        states.push_back({.name = "torvex", .isUp = needs_.torvex.IsConnected()});
    if (needs_.mqtt.IsConfigured()) states.push_back(needs_.mqtt.State());
    return states;
}

void CentreConditions::AddPlace(FactList& facts) const {
    if (needs_.server && !needs_.server->IsConnectionLost() && needs_.server->IsAtStandby()) {
        facts.push_back({.kind = Standby, .name = needs_.server->ServerAddress()});
    }
    if (jumpMs_ != 0 && needs_.clock.MonotonicMs() - jumpedAtMs_ < kJumpToldMs) {
        // To the next second: two clocks cannot be read at the same moment.
        const int seconds = static_cast<int>((std::abs(jumpMs_) + 500) / 1000);
        facts.push_back({.kind = ClockJumped, .since = jumpedAt_, .count = seconds});
    }
    if (const std::size_t findings = needs_.check.Count(); findings > 0) {
        facts.push_back(
            {.kind = FaultsInFiles, .name = needs_.check.Place(), .count = static_cast<int>(findings)});
    }
    if (inService_ > 0) facts.push_back({.kind = InService, .count = inService_});
    if (endingSoon_ > 0) {
        facts.push_back({.kind = ServiceEnds, .name = firstToEnd_, .since = firstEnd_, .count = endingSoon_});
    }
}

void CentreConditions::WatchClock() {
    const std::int64_t jump = ClockOffsetMs() - clockOffsetMs_;
    clockOffsetMs_ += jump;
    if (std::abs(jump) < kJumpMs) return;
    jumpMs_ = jump;
    jumpedAtMs_ = needs_.clock.MonotonicMs();
    jumpedAt_ = needs_.clock.Now();
}

void CentreConditions::CountService() {
    if (roundsToCount_-- > 0) return;
    roundsToCount_ = kServiceRounds - 1;
    inService_ = endingSoon_ = 0;
    firstEnd_ = {};
    const OleDate now = needs_.clock.Now();
    for (const auto& set : needs_.translations.Sets()) {
        for (const auto& object : set->m_IdCodes) {
            if (IsInService(*object, now)) NoteInService(*object, now);
        }
    }
}

void CentreConditions::NoteInService(const cIDCode& object, OleDate now) {
    ++inService_;
    const OleDate end = object.m_ServicePeriodEnd;
    const bool hasEnd = object.m_ServiceMode != static_cast<int>(ServiceMode::LogOnly);
    if (!hasEnd || end > now.PlusMinutes(kEndToldMinutes)) return;
    ++endingSoon_;
    if (!firstEnd_.IsNever() && end >= firstEnd_) return;
    firstEnd_ = end;
    firstToEnd_ = object.m_ObjectName.empty() ? object.m_IdCode : object.m_ObjectName;
}

std::vector<ConditionFact> CentreConditions::FactsForClients() const {
    FactList shared;
    std::ranges::copy_if(facts_, std::back_inserter(shared), [](const ConditionFact& fact) {
        return fact.kind != SoundDead && fact.kind != InService && fact.kind != ServiceEnds &&
               fact.kind != Standby;
    });
    return shared;
}

}  // namespace nordkeep
