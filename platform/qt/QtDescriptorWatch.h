#pragma once

#include "platform/DescriptorWatch.h"

namespace nordkeep {

class QtDescriptorWatches final : public DescriptorWatches {
 public:
    std::unique_ptr<DescriptorWatch> Watch(int descriptor, Readiness readiness,
                                           std::function<void()> onReady) override;
};

}  // namespace nordkeep
