#pragma once

#include <functional>
#include <memory>

namespace nordkeep {

/// Calls a handler of the loop whenever a descriptor of somebody else's library is ready; until it goes.
class DescriptorWatch {
 public:
    virtual ~DescriptorWatch() = default;
    /// Off, the handler is not called, however ready the descriptor is. On from the begin.
    virtual void SetOn(bool isOn) = 0;
};

class DescriptorWatches {
 public:
    virtual ~DescriptorWatches() = default;
    enum class Readiness { Read, Write };
    /// The descriptor stays open at least as long as the watch.
    virtual std::unique_ptr<DescriptorWatch> Watch(int descriptor, Readiness readiness,
                                                   std::function<void()> onReady) = 0;
};

}  // namespace nordkeep
