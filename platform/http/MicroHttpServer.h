#pragma once

#include "platform/DescriptorWatch.h"
#include "platform/EventLoop.h"
#include "platform/HttpServer.h"

#include <set>

struct MHD_Connection;
struct MHD_Daemon;

namespace nordkeep {

/// The web service on a library that is told by the loop when one of its descriptors is ready.
class MicroHttpServer final : public HttpServer {
 public:
    MicroHttpServer(EventLoop& loop, DescriptorWatches& watches);
    ~MicroHttpServer() override;

    bool Open(const HttpListening& listening, HttpHandler& handler) override;
    void Close() override;
    bool IsOpen() const override { return daemon_ != nullptr; }
    void Wake() override;
    std::string LastError() const override { return lastError_; }

 private:
    struct Glue;  // what the library calls
    struct Sending;
    friend struct Glue;

    void Run();
    void PlanNextRun();
    bool Fail(const std::string& reason);

    DescriptorWatches& watches_;
    std::unique_ptr<Timer> timer_;
    MHD_Daemon* daemon_ = nullptr;
    HttpHandler* handler_ = nullptr;
    std::unique_ptr<DescriptorWatch> watch_{};
    std::set<MHD_Connection*> waiting_{};  // suspended until Wake
    bool isRunning_ = false;
    std::string lastError_{};
};

}  // namespace nordkeep
