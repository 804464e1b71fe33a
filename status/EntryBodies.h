#pragma once

#include "platform/Clock.h"
#include "platform/HttpServer.h"
#include "store/EventList.h"
#include "store/Journal.h"

namespace nordkeep {

/// Entries of the journal behind an id as JSON lines, up to a number of them.
class EntryLines final : public HttpBody {
 public:
    using Form = std::string (*)(const JournalRow&);
    EntryLines(Journal& journal, std::int64_t after, std::size_t most, Form form)
        : journal_(journal), after_(after), left_(most), form_(form) {}
    State Next(std::string& piece) override;

 private:
    Journal& journal_;
    std::int64_t after_;
    std::size_t left_;
    Form form_;
};

/// Entries behind an id as they come, as server-sent events that name their ids; a comment line when there
/// was nothing to tell for a while, so that either end notices when the other has gone.
class EntryStream final : public HttpBody {
 public:
    EntryStream(Journal& journal, const Clock& clock, std::int64_t after);
    State Next(std::string& piece) override;

 private:
    Journal& journal_;
    const Clock& clock_;
    std::int64_t after_;
    std::int64_t toldAtMs_;
    bool isFirst_ = true;
};

/// The open alarms as JSON lines, in the order of the list.
class AlarmLines final : public HttpBody {
 public:
    AlarmLines(Journal& journal, const EventList& events) : journal_(journal), events_(events) {}
    State Next(std::string& piece) override;

 private:
    Journal& journal_;
    const EventList& events_;
    EventSequence at_ = 0;
};

}  // namespace nordkeep
