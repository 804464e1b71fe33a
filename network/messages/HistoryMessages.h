#pragma once

#include "network/messages/Messages.h"
#include "reports/HistorySource.h"

namespace nordkeep {

// What a client asks its server of the journal, and the answers. What grows later is a text of its own, so
// that a later copy can put more behind what an earlier one reads.

/// Message 34 to the server.
struct HistoryQuestion {
    std::int32_t number = 0;
    HistoryQuery query{};
};
Text HistoryQuestionPayload(const HistoryQuestion& question);
/// None when it is cut short.
std::optional<HistoryQuestion> ReadHistoryQuestion(TextView payload);

/// Message 34 to the client. `number` is that of the question, 0 for one that was not allowed.
struct HistoryAnswer {
    std::int32_t number = 0;
    HistoryPage page{};
};
Text HistoryAnswerPayload(const HistoryAnswer& answer);
/// The times of the entries are those of the reader's zone.
std::optional<HistoryAnswer> ReadHistoryAnswer(TextView payload, const Clock& clock);

/// Message 35 to the server.
struct ReportQuestion {
    std::int32_t number = 0;
    ReportSpan span{};

    template <class Self, class Wire>
    static void Carry(Self& self, Wire& wire) {
        wire.Long(self.number);
        wire.DateTime(self.span.from);
        wire.DateTime(self.span.to);
    }
};

/// Message 35 to the client.
struct ReportAnswer {
    std::int32_t number = 0;
    AlarmFigures figures{};
};
Text ReportAnswerPayload(const ReportAnswer& answer);
std::optional<ReportAnswer> ReadReportAnswer(TextView payload);

/// Message 36: somebody signs a shift over.
struct HandoverGiven {
    Text note{};
    Text list{};

    template <class Self, class Wire>
    static void Carry(Self& self, Wire& wire) {
        wire.LongString(self.note);
        wire.LongString(self.list);
    }
};

}  // namespace nordkeep
