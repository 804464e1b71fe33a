#pragma once

#include "platform/DescriptorWatch.h"
#include "platform/EventLoop.h"
#include "platform/Inet.h"

namespace nordkeep {

class CurlTransfers;

/// Requests by libcurl in the one loop. Slots may outlive the factory.
class CurlInetFactory final : public InetFactory {
 public:
    CurlInetFactory(EventLoop& loop, DescriptorWatches& watches);
    std::unique_ptr<Inet> NewInet() override;
    Text Md5(TextView bytes) const override;

 private:
    std::shared_ptr<CurlTransfers> transfers_;
};

}  // namespace nordkeep
