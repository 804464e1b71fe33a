#pragma once

#include "app/settings/CentreSettings.h"

namespace nordkeep {

/// Brings new values of the settings files into the running program. Users hold the settings by reference and
/// read most of them at each use; what is taken only once, when something is built, stays until the next
/// start.
class LiveSettings {
 public:
    LiveSettings(const Settings& files, CentreSettings& settings) : files_(files), settings_(settings) {}

    void Renew();

 private:
    const Settings& files_;
    CentreSettings& settings_;
};

/// Whether a key of the main settings file counts only at the next start.
bool CountsAtNextStart(TextView section, TextView key);

}  // namespace nordkeep
