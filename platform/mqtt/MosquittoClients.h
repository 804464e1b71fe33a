#pragma once

#include "platform/DescriptorWatch.h"
#include "platform/EventLoop.h"
#include "platform/MqttClient.h"

namespace nordkeep {

/// Connections on a library that is told by the loop when its socket is ready.
class MosquittoClients final : public MqttClients {
 public:
    MosquittoClients(EventLoop& loop, DescriptorWatches& watches);
    ~MosquittoClients() override;
    std::unique_ptr<MqttClient> NewClient(MqttListener& listener) override;

 private:
    EventLoop& loop_;
    DescriptorWatches& watches_;
};

}  // namespace nordkeep
