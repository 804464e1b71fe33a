#pragma once

#include "platform/FileTree.h"
#include "platform/HttpServer.h"
#include "runtime/Language.h"
#include "runtime/SysLog.h"
#include "status/EntryBodies.h"
#include "status/StatusFacts.h"
#include "status/StatusSettings.h"
#include "store/EventList.h"
#include "store/Journal.h"

namespace nordkeep {

/// Tells other programs, and people with a browser, how the centre does and what happens in it. It changes
/// nothing.
class StatusService final : private HttpHandler {
 public:
    struct Needs {
        HttpServer& server;
        const StatusSettings& settings;
        const FileTree& dataFolder;
        const Clock& clock;
        const Language& language;
        SysLog& log;
        const StatusSource& source;
        const EventList& events;
        const CommitTimes& times;
        Journal* journal;  // none on a client
    };
    explicit StatusService(const Needs& needs) : needs_(needs) {}

    /// Listens as the settings say, and logs what hinders it; tried again by Tick where that may pass.
    void Open();
    void Close() { needs_.server.Close(); }
    /// To be called several times a second: what is new goes to those who wait for it.
    void Tick(int intervalMs);

 private:
    using Route = HttpAnswer (StatusService::*)(const HttpRequest&);
    HttpAnswer Answer(const HttpRequest& request) override;
    bool IsAllowed(const HttpRequest& request) const;

    HttpAnswer Health(const HttpRequest&);
    HttpAnswer Readiness(const HttpRequest&);
    HttpAnswer Metrics(const HttpRequest&);
    HttpAnswer Events(const HttpRequest& request);
    HttpAnswer Entries(const HttpRequest& request);
    HttpAnswer Lines(const HttpRequest& request, EntryLines::Form form);
    HttpAnswer Stream(const HttpRequest& request);
    HttpAnswer Alarms(const HttpRequest&);
    HttpAnswer Ports(const HttpRequest&);
    HttpAnswer Summary(const HttpRequest&);
    HttpAnswer Page(const HttpRequest&);

    bool Listen();
    void TellOnce(int text, const Text& behind);

    Needs needs_;
    int sinceTryMs_ = 0;
    int sinceWakeMs_ = 0;
    std::int64_t seenId_ = 0;
    Text told_{};  // what hindered it last
};

}  // namespace nordkeep
