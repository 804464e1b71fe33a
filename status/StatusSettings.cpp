#include "status/StatusSettings.h"

#include <array>

namespace nordkeep {
namespace {

constexpr const char* kSection = "Status";
constexpr SettingScope kOwn = SettingScope::Workstation;
using S = StatusSettings;

const std::array kRows = {
    SettingRow<S>{kSection, "Port", kOwn, &S::Port, 0, 65535},
    SettingRow<S>{kSection, "Address", kOwn, &S::Address},
    SettingRow<S>{kSection, "Token", kOwn, &S::Token},
    SettingRow<S>{kSection, "TlsCertificate", kOwn, &S::TlsCertificate},
    SettingRow<S>{kSection, "TlsKey", kOwn, &S::TlsKey},
};

}  // namespace

std::span<const SettingRow<StatusSettings>> StatusSettingRows() {
    return kRows;
}

bool IsLoopback(TextView address) {
    return address.starts_with("127.") || address == "::1";
}

bool IsExposed(const StatusSettings& settings) {
    const bool isGuarded =
        !settings.Token.empty() && !settings.TlsCertificate.empty() && !settings.TlsKey.empty();
    return !IsLoopback(settings.Address) && !isGuarded;
}

}  // namespace nordkeep
