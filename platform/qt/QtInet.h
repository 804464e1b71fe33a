#pragma once

#include "platform/Inet.h"

namespace nordkeep {

/// Web requests by the toolkit's network library.
class QtInetFactory : public InetFactory {
 public:
    std::unique_ptr<Inet> NewInet() override;
    Text Md5(TextView bytes) const override;
};

}  // namespace nordkeep
