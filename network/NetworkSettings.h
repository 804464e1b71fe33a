#pragma once

#include "platform/Winsock.h"
#include "runtime/SettingTable.h"

namespace nordkeep {

/// How this copy works together with others; the workstation's own settings, section NetWork.
struct NetworkSettings {
    Text ServerAddress{};    // not empty: this copy is a client of that server
    Text ClientAddresses{};  // not empty: this copy serves these clients
    int NetworkPort = 17666;
    int NetworkKeepAliveInterval = 5000;   // ms; 0 is off, else at least 1000
    int NetworkReconnectInterval = 60000;  // ms
    int NetworkTimeout = 5000;             // ms, at least 100
    bool AskForNetworkModeAtStartup = false;
    bool LogTraffic = false;
    bool ViewLoginFormAutomatically = false;
    Text AutoLoginUserName{};
    Text AutoLoginPassword{};
    bool Tls = false;       // the link is encrypted, with certificates on both sides
    Text TlsCertificate{};  // PEM files; relative paths are of the data folder
    Text TlsKey{};
    Text TlsCAFile{};
    Text RemoteFileFolders{};  // ";"-separated, outside the data folder, that clients may read by full path
};

std::span<const SettingRow<NetworkSettings>> NetworkSettingRows();
NetworkSettings LoadNetworkSettings(const Settings& files);
/// How all connections between copies are encrypted.
SocketTls LinkTlsOf(const NetworkSettings& settings, const FileTree& dataFolder);

}  // namespace nordkeep
