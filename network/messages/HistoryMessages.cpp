#include "network/messages/HistoryMessages.h"

namespace nordkeep {
namespace {

constexpr std::size_t kMostEntries = 1000;
/// As many ten minutes as the longest report has, and as many rows of a table as it could have.
constexpr std::size_t kMostBins = std::size_t{ReportSpan::kMostDays + 1} * 24 * 6;
constexpr std::size_t kMostRows = 1000;
constexpr int kWhatCount = 3;

template <class Self, class Wire>
void CarryQuery(Self& query, int& what, Text& after, Wire& wire) {
    wire.DateTime(query.from);
    wire.DateTime(query.to);
    wire.Integer(what);
    wire.ShortString(query.object);
    wire.ShortString(query.type);
    wire.ShortString(query.priority);
    wire.ShortString(query.doer);
    wire.ShortString(query.text);
    wire.ShortString(query.event);
    wire.ShortString(query.exactObject);
    wire.ShortString(after);
}

template <class Self, class Wire>
void CarryEntry(Self& entry, Text& place, int& status, Wire& wire) {
    wire.ShortString(place);
    wire.ShortString(entry.kind);
    wire.ShortString(entry.event);
    wire.Integer(status);
    wire.ShortString(entry.priority);
    wire.ShortString(entry.object);
    wire.ShortString(entry.objectName);
    wire.ShortString(entry.set);
    wire.ShortString(entry.type);
    wire.ShortString(entry.typeName);
    wire.ShortString(entry.port);
    wire.ShortString(entry.user);
    wire.ShortString(entry.station);
    wire.LongString(entry.text);
    wire.LongString(entry.comment);
}

template <class Self, class Wire>
void CarryDurations(Self& durations, Wire& wire) {
    wire.Long(durations.count);
    wire.Long(durations.median);
    wire.Long(durations.ofTwenty);
    wire.Long(durations.worst);
}

template <class Self, class Wire>
void CarryReaction(Self& reaction, Wire& wire) {
    wire.ShortString(reaction.group);
    wire.Long(reaction.alarms);
    CarryDurations(reaction.touch, wire);
    CarryDurations(reaction.comment, wire);
    CarryDurations(reaction.end, wire);
}

template <class Self, class Wire>
void CarrySource(Self& source, Wire& wire) {
    wire.ShortString(source.object);
    wire.ShortString(source.name);
    wire.ShortString(source.type);
    wire.Long(source.count);
}

/// A list of rows, its length in front.
template <class Rows, class CarryRow>
void CarryRows(const Rows& rows, PayloadWriter& wire, CarryRow carry) {
    wire.Long(static_cast<std::int32_t>(rows.size()));
    for (const auto& row : rows) carry(row, wire);
}
template <class Rows, class CarryRow>
void CarryRows(Rows& rows, PayloadReader& wire, CarryRow carry, std::size_t most = kMostRows) {
    std::int32_t count = 0;
    wire.Long(count);
    for (std::int32_t i = 0; i < count && rows.size() < most && !wire.HasRunOut(); ++i) {
        rows.emplace_back();
        carry(rows.back(), wire);
    }
}

template <class Self, class Wire>
void CarryFigures(Self& figures, bool& isCut, bool& isReadable, Wire& wire) {
    wire.DateTime(figures.from);
    wire.DateTime(figures.to);
    wire.Long(figures.alarms);
    wire.Flag(isCut);
    wire.Flag(isReadable);
    wire.Long(figures.floods);
    wire.Long(figures.floodSeconds);
    const auto reaction = [](auto& row, auto& to) { CarryReaction(row, to); };
    const auto source = [](auto& row, auto& to) { CarrySource(row, to); };
    reaction(figures.all, wire);
    for (auto* rows : {&figures.byPriority, &figures.byHour, &figures.byOperator})
        CarryRows(*rows, wire, reaction);
    for (auto* rows : {&figures.frequent, &figures.chattering, &figures.stale, &figures.unknown})
        CarryRows(*rows, wire, source);
}

}  // namespace

Text HistoryQuestionPayload(const HistoryQuestion& question) {
    PayloadWriter query;
    int what = static_cast<int>(question.query.what);
    Text after = TextOf(question.query.after);
    CarryQuery(question.query, what, after, query);
    PayloadWriter wire;
    wire.Long(question.number);
    wire.LongString(query.Bytes());
    return wire.Take();
}

std::optional<HistoryQuestion> ReadHistoryQuestion(TextView payload) {
    PayloadReader wire(payload);
    HistoryQuestion question;
    Text bytes;
    wire.Long(question.number);
    wire.LongString(bytes);
    PayloadReader query(bytes);
    int what = 0;
    Text after;
    CarryQuery(question.query, what, after, query);
    if (wire.HasRunOut() || query.HasRunOut()) return std::nullopt;
    question.query.what = static_cast<HistoryQuery::What>(what >= 0 && what < kWhatCount ? what : 0);
    question.query.after = ReadHistoryPlace(after);
    return question;
}

Text HistoryAnswerPayload(const HistoryAnswer& answer) {
    PayloadWriter wire;
    wire.Long(answer.number);
    wire.Flag(answer.page.isEnd);
    wire.Flag(answer.page.isReadable);
    wire.ShortString(TextOf(answer.page.reached));
    for (const HistoryEntry& entry : answer.page.entries) {
        PayloadWriter one;
        Text place = TextOf(entry.place);
        int status = entry.status;
        CarryEntry(entry, place, status, one);
        wire.LongString(one.Bytes());
    }
    return wire.Take();
}

std::optional<HistoryAnswer> ReadHistoryAnswer(TextView payload, const Clock& clock) {
    PayloadReader wire(payload);
    HistoryAnswer answer;
    Text reached;
    wire.Long(answer.number);
    wire.Flag(answer.page.isEnd);
    wire.Flag(answer.page.isReadable);
    wire.ShortString(reached);
    if (wire.HasRunOut()) return std::nullopt;
    answer.page.reached = ReadHistoryPlace(reached);
    while (!wire.IsAtEnd() && answer.page.entries.size() < kMostEntries) {
        Text bytes;
        wire.LongString(bytes);
        if (wire.HasRunOut()) break;
        PayloadReader one(bytes);
        HistoryEntry entry;
        Text place;
        CarryEntry(entry, place, entry.status, one);
        entry.place = ReadHistoryPlace(place);
        entry.time = clock.LocalOf(UtcMsOf(entry.place.time));
        answer.page.entries.push_back(std::move(entry));
    }
    return answer;
}

Text ReportAnswerPayload(const ReportAnswer& answer) {
    PayloadWriter figures;
    bool isCut = answer.figures.isCut;
    bool isReadable = answer.figures.isReadable;
    CarryFigures(answer.figures, isCut, isReadable, figures);
    CarryRows(answer.figures.bins, figures, [](std::int32_t bin, PayloadWriter& wire) { wire.Long(bin); });
    PayloadWriter wire;
    wire.Long(answer.number);
    wire.LongString(figures.Bytes());
    return wire.Take();
}

std::optional<ReportAnswer> ReadReportAnswer(TextView payload) {
    PayloadReader wire(payload);
    ReportAnswer answer;
    Text bytes;
    wire.Long(answer.number);
    wire.LongString(bytes);
    PayloadReader figures(bytes);
    CarryFigures(answer.figures, answer.figures.isCut, answer.figures.isReadable, figures);
    const auto bin = [](std::int32_t& value, PayloadReader& from) { from.Long(value); };
    CarryRows(answer.figures.bins, figures, bin, kMostBins);
    if (wire.HasRunOut() || figures.HasRunOut()) return std::nullopt;
    return answer;
}

}  // namespace nordkeep
