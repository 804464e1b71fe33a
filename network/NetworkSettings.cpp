#include "network/NetworkSettings.h"

#include <array>

namespace nordkeep {
namespace {

constexpr const char* kNetWork = "NetWork";
constexpr SettingScope kOwn = SettingScope::Workstation;
using N = NetworkSettings;

const std::array kRows = {
    SettingRow<N>{kNetWork, "ServerAddress", kOwn, &N::ServerAddress},
    SettingRow<N>{kNetWork, "ClientAddresses", kOwn, &N::ClientAddresses},
    SettingRow<N>{kNetWork, "NetworkPort", kOwn, &N::NetworkPort, 0, 65535},
    SettingRow<N>{kNetWork, "NetworkKeepAliveInterval", kOwn, &N::NetworkKeepAliveInterval, 0},
    SettingRow<N>{kNetWork, "NetworkReconnectInterval", kOwn, &N::NetworkReconnectInterval},
    SettingRow<N>{kNetWork, "NetworkTimeout", kOwn, &N::NetworkTimeout, 100},
    SettingRow<N>{kNetWork, "AskForNetworkModeAtStartup", kOwn, &N::AskForNetworkModeAtStartup},
    SettingRow<N>{kNetWork, "LogTraffic", kOwn, &N::LogTraffic},
    SettingRow<N>{kNetWork, "ViewLoginFormAutomatically", kOwn, &N::ViewLoginFormAutomatically},
    SettingRow<N>{kNetWork, "AutoLoginUserName", kOwn, &N::AutoLoginUserName},
    SettingRow<N>{kNetWork, "AutoLoginPassword", kOwn, &N::AutoLoginPassword},
    SettingRow<N>{kNetWork, "Tls", kOwn, &N::Tls},
    SettingRow<N>{kNetWork, "TlsCertificate", kOwn, &N::TlsCertificate},
    SettingRow<N>{kNetWork, "TlsKey", kOwn, &N::TlsKey},
    SettingRow<N>{kNetWork, "TlsCAFile", kOwn, &N::TlsCAFile},
    SettingRow<N>{kNetWork, "RemoteFileFolders", kOwn, &N::RemoteFileFolders},
};

}  // namespace

std::span<const SettingRow<NetworkSettings>> NetworkSettingRows() {
    return kRows;
}

NetworkSettings LoadNetworkSettings(const Settings& files) {
    constexpr int kShortestKeepAliveMs = 1000;
    NetworkSettings settings = LoadSettings(files, NetworkSettingRows());
    for (Text* text : {&settings.ServerAddress, &settings.ClientAddresses, &settings.AutoLoginUserName,
                       &settings.AutoLoginPassword})
        *text = Text(TrimBlanks(*text));
    int& interval = settings.NetworkKeepAliveInterval;
    if (interval > 0 && interval < kShortestKeepAliveMs) interval = kShortestKeepAliveMs;
    return settings;
}

SocketTls LinkTlsOf(const NetworkSettings& settings, const FileTree& dataFolder) {
    if (!settings.Tls) return {};
    return {.isOn = true,
            .authorityFile = dataFolder.ResolveSetting(settings.TlsCAFile),
            .certificateFile = dataFolder.ResolveSetting(settings.TlsCertificate),
            .keyFile = dataFolder.ResolveSetting(settings.TlsKey)};
}

}  // namespace nordkeep
