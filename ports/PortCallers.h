#pragma once

#include "ports/formats/CallerIdentity.h"
#include "translation/PortBinding.h"

namespace nordkeep {

class PortList;

/// The callers that the objects of all ports know, those of the own port first.
class PortCallers final : public CallerBook {
 public:
    PortCallers(const PortList& ports, const PortBinding& ownPort) : ports_(ports), ownPort_(ownPort) {}
    std::optional<KnownCaller> FindCaller(TextView number) const override;

 private:
    const PortList& ports_;
    const PortBinding& ownPort_;
};

}  // namespace nordkeep
