#pragma once

#include "runtime/SettingRow.h"

#include <optional>

namespace nordkeep {

/// A broker that is told of every entry of the journal.
struct MqttSettings {
    Text Address{};  // HOST or HOST:PORT; empty: none
    Text Topic = "nordkeep";
    Text User{};
    Text Password{};
    // PEM files, below the data folder unless absolute.
    Text CAFile{};
    Text ClientCertificate{};
    Text ClientKey{};
};

std::span<const SettingRow<MqttSettings>> MqttSettingRows();

/// The host and port of an address; none for one that is neither.
struct BrokerPlace {
    Text host{};
    int port = 0;
};
std::optional<BrokerPlace> PlaceOf(const MqttSettings& settings);

}  // namespace nordkeep
