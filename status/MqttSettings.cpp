#include "status/MqttSettings.h"

#include <array>

namespace nordkeep {
namespace {

constexpr const char* kSection = "Mqtt";
constexpr SettingScope kCentre = SettingScope::Centre;
constexpr int kPlainPort = 1883;
constexpr int kSecurePort = 8883;
constexpr int kHighestPort = 65535;
using S = MqttSettings;

const std::array kRows = {
    SettingRow<S>{kSection, "Address", kCentre, &S::Address},
    SettingRow<S>{kSection, "Topic", kCentre, &S::Topic},
    SettingRow<S>{kSection, "User", kCentre, &S::User},
    SettingRow<S>{kSection, "Password", kCentre, &S::Password},
    SettingRow<S>{kSection, "CAFile", kCentre, &S::CAFile},
    SettingRow<S>{kSection, "ClientCertificate", kCentre, &S::ClientCertificate},
    SettingRow<S>{kSection, "ClientKey", kCentre, &S::ClientKey},
};

}  // namespace

std::span<const SettingRow<MqttSettings>> MqttSettingRows() {
    return kRows;
}

std::optional<BrokerPlace> PlaceOf(const MqttSettings& settings) {
    const Text address(TrimBlanks(settings.Address));
    const std::size_t bracket = address.starts_with('[') ? address.find(']') : Text::npos;
    const std::size_t colon = bracket != Text::npos                     ? address.find(':', bracket)
                              : address.find(':') == address.rfind(':') ? address.find(':')
                                                                        : Text::npos;  // bare IPv6
    BrokerPlace place{address.substr(0, colon), settings.CAFile.empty() ? kPlainPort : kSecurePort};
    if (bracket != Text::npos) place.host = address.substr(1, bracket - 1);
    if (colon != Text::npos) {
        const Text number = address.substr(colon + 1);
        place.port = IsNumeric(number) ? LeadingInt32(number) : 0;
    }
    const bool isPlace = !place.host.empty() && place.port >= 1 && place.port <= kHighestPort;
    return isPlace ? std::optional(place) : std::nullopt;
}

}  // namespace nordkeep
