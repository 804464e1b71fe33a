#include "network/messages/CentreMessages.h"

#include "network/messages/Messages.h"

namespace nordkeep {
namespace {

/// More than any centre has.
constexpr std::size_t kMostEntries = 1000;

template <class Self, class Wire>
void CarryLine(Self& line, int& state, Wire& wire) {
    wire.ShortString(line.name);
    wire.ShortString(line.description);
    wire.ShortString(line.kind);
    wire.Integer(state);
    wire.DateTime(line.since);
    wire.DateTime(line.lastTraffic);
    wire.Long(line.telegramsToday);
    wire.Long(line.refusedToday);
    wire.Long(line.reconnectsToday);
    wire.ShortString(line.caller);
}

template <class Self, class Wire>
void CarryAccount(Self& account, int& isSilent, Wire& wire) {
    wire.ShortString(account.name);
    wire.DateTime(account.lastMessage);
    wire.Integer(isSilent);
}

template <class Self, class Wire>
void CarryFact(Self& fact, int& kind, Wire& wire) {
    wire.Integer(kind);
    wire.ShortString(fact.name);
    wire.DateTime(fact.since);
    wire.Long(fact.count);
}

/// The entries of a payload, one after the other.
template <class Take>
void ReadEntries(PayloadReader& wire, Take&& take) {
    for (std::size_t entry = 0; entry < kMostEntries && !wire.IsAtEnd(); ++entry) {
        Text bytes;
        wire.LongString(bytes);
        if (wire.HasRunOut()) return;
        take(TextView(bytes));
    }
}

}  // namespace

Text LinesPayload(const std::vector<LineFigures>& lines) {
    PayloadWriter all;
    for (const LineFigures& line : lines) {
        PayloadWriter wire;
        int state = static_cast<int>(line.state);
        CarryLine(line, state, wire);
        all.LongString(wire.Bytes());
    }
    return all.Take();
}

std::vector<LineFigures> ReadLines(TextView payload) {
    std::vector<LineFigures> lines;
    PayloadReader all(payload);
    ReadEntries(all, [&lines](TextView bytes) {
        PayloadReader wire(bytes);
        LineFigures line;
        int state = 0;
        CarryLine(line, state, wire);
        const bool isKnown = state >= 0 && state < kLineStateCount;
        line.state = isKnown ? static_cast<LineState>(state) : LineState::Unusable;
        lines.push_back(std::move(line));
    });
    return lines;
}

Text ConditionsPayload(const std::vector<ConditionFact>& facts) {
    PayloadWriter all;
    for (const ConditionFact& fact : facts) {
        PayloadWriter wire;
        int kind = static_cast<int>(fact.kind);
        CarryFact(fact, kind, wire);
        all.LongString(wire.Bytes());
    }
    return all.Take();
}

std::vector<ConditionFact> ReadConditions(TextView payload) {
    std::vector<ConditionFact> facts;
    PayloadReader all(payload);
    ReadEntries(all, [&facts](TextView bytes) {
        PayloadReader wire(bytes);
        ConditionFact fact;
        int kind = -1;
        CarryFact(fact, kind, wire);
        if (kind < 0 || kind >= kConditionKindCount) return;
        fact.kind = static_cast<ConditionKind>(kind);
        facts.push_back(std::move(fact));
    });
    return facts;
}

Text AccountsPayload(const LineAccounts& accounts) {
    PayloadWriter all;
    all.ShortString(accounts.line);
    for (const LineAccount& account : accounts.accounts) {
        PayloadWriter wire;
        int isSilent = account.isSilent ? 1 : 0;
        CarryAccount(account, isSilent, wire);
        all.LongString(wire.Bytes());
    }
    return all.Take();
}

LineAccounts ReadAccounts(TextView payload) {
    LineAccounts told;
    PayloadReader all(payload);
    all.ShortString(told.line);
    ReadEntries(all, [&told](TextView bytes) {
        PayloadReader wire(bytes);
        LineAccount account;
        int isSilent = 0;
        CarryAccount(account, isSilent, wire);
        account.isSilent = isSilent != 0;
        told.accounts.push_back(std::move(account));
    });
    return told;
}

}  // namespace nordkeep
