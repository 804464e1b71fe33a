#include "ports/PortCallers.h"

#include "ports/PortList.h"
#include "translation/ObjectLookup.h"

namespace nordkeep {

std::optional<KnownCaller> PortCallers::FindCaller(TextView number) const {
    const auto match = nordkeep::FindCaller(ownPort_, ports_.Bindings(), number);
    if (!match) return std::nullopt;
    return KnownCaller{match->set, match->object->m_IdCode, match->protocol};
}

}  // namespace nordkeep
