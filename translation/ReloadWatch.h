#pragma once

#include "translation/ServicePeriods.h"
#include "translation/Translations.h"

#include <cstdint>

namespace nordkeep {

/// The automatic reload: looks now and then whether translation files have changed, and takes in service
/// periods from another system. Not for a client.
class ReloadWatch {
 public:
    ReloadWatch(Translations& translations, ServicePeriods& periods, const TranslationSettings& settings)
        : translations_(translations), periods_(periods), settings_(settings) {}

    /// Counts the time of a tick. True when the sets are to be reloaded now.
    bool Tick(int elapsedMs);

 private:
    Translations& translations_;
    ServicePeriods& periods_;
    const TranslationSettings& settings_;
    std::int64_t elapsedMs_ = 0;
};

}  // namespace nordkeep
