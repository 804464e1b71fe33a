#include "app/CentreStatus.h"

#include "console/lists/LineRows.h"
#include "console/window/Conditions.h"
#include "platform/ProcessFacts.h"

#include <algorithm>

namespace nordkeep {
namespace {

const char* WordOf(LineState state) {
    static constexpr const char* kWords[kLineStateCount] = {
        "open",     "failed",           "disabled",  "held",  "waiting",
        "unusable", "waits-for-caller", "connected", "muted", "quiet"};
    return kWords[static_cast<int>(state)];
}

}  // namespace

StatusFacts CentreStatus::Facts() const {
    StatusFacts facts;
    AddLines(facts);
    facts.outputs = needs_.conditions.Outputs();
    AddConditions(facts);
    AddReasons(facts);
    facts.oldestUnhandled = needs_.lists.OldestUnhandled();
    facts.longestStallMs = needs_.stalls.LongestStallMs();
    facts.clients = needs_.clients ? static_cast<std::size_t>(needs_.clients->ConnectedCount()) : 0;
    facts.storeErrors = needs_.store.FailureCount();
    const ProcessFacts process = PresentProcessFacts();
    facts.memoryBytes = process.residentBytes;
    facts.openDescriptors = process.openDescriptors;
    return facts;
}

void CentreStatus::AddLines(StatusFacts& facts) const {
    for (const auto& port : needs_.ports.Ports()) {
        const LineFigures figures = port->Figures();
        facts.lines.push_back({.name = figures.name,
                               .description = figures.description,
                               .kind = figures.kind,
                               .state = WordOf(figures.state),
                               .stateText = LineStateText(captions_, figures.state),
                               .isOpen = port->IsOpen(),
                               .since = figures.since,
                               .lastTraffic = figures.lastTraffic,
                               .telegrams = port->Totals().telegrams,
                               .events = port->Totals().events,
                               .refused = port->Totals().refused,
                               .telegramsToday = figures.telegramsToday,
                               .refusedToday = figures.refusedToday});
    }
}

void CentreStatus::AddConditions(StatusFacts& facts) const {
    Conditions conditions(captions_);
    conditions.Renew(needs_.conditions.Facts(), needs_.clock.Now());
    for (const Condition& condition : conditions.Rows()) facts.conditions.push_back(condition.sentence);
}

void CentreStatus::AddReasons(StatusFacts& facts) const {
    if (needs_.role == Role::Client) {
        facts.notReady.emplace_back("a client: its server takes alarms in");
        return;
    }
    if (std::ranges::none_of(facts.lines, &LineStatus::isOpen))
        facts.notReady.emplace_back("no port is open");
    if (needs_.store.UnsavedCount() > 0) facts.notReady.emplace_back("events cannot be written");
    if (needs_.commit.HasJournalFailed()) facts.notReady.emplace_back("the journal cannot be written");
}

}  // namespace nordkeep
