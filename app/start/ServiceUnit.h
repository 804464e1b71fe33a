#pragma once

#include <string>

namespace nordkeep {

class EventLoop;

/// The name of the service, which messages begin with.
inline constexpr const char* kServiceName = "Nordkeep";

/// The systemd unit for this program on this data folder; both are absolute paths. The data folder may be
/// empty for the default, which is the program's own folder.
std::string ServiceUnitText(const std::string& program, const std::string& dataFolder);

/// What became of a change of the unit, in words for the terminal.
struct ServiceChange {
    bool isDone = false;
    std::string report{};
};

/// Writes or removes the unit in the folder of units, and lets the service manager read them anew. The folder
/// is /etc/systemd/system, or the one that the environment variable NORDKEEP_UNIT_FOLDER names.
ServiceChange InstallService(const std::string& program, const std::string& dataFolder, EventLoop& loop);
ServiceChange UninstallService(EventLoop& loop);

}  // namespace nordkeep
