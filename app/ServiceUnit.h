#pragma once

#include <string>

namespace nordkeep {

/// The name of the service, which messages begin with.
inline constexpr const char* kServiceName = "Nordkeep";

/// The systemd unit for this program on this data folder; both are absolute paths. The data folder may be
/// empty for the default, which is the program's own folder.
std::string ServiceUnitText(const std::string& program, const std::string& dataFolder);

/// Writes or removes the unit in the folder of units: /etc/systemd/system, or the one that the environment
/// variable NORDKEEP_UNIT_FOLDER names. False when that failed.
bool InstallService(const std::string& program, const std::string& dataFolder);
bool UninstallService();

}  // namespace nordkeep
