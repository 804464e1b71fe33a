#pragma once

#include "runtime/SettingRow.h"

namespace nordkeep {

/// The service that tells programs and screens in the house how the centre does.
struct StatusSettings {
    int Port = 0;  // TCP; 0: none
    Text Address = "127.0.0.1";
    Text Token{};
    // PEM files, below the data folder unless absolute.
    Text TlsCertificate{};
    Text TlsKey{};
};

std::span<const SettingRow<StatusSettings>> StatusSettingRows();

/// Only this machine can call.
bool IsLoopback(TextView address);
/// Other machines can call, so it has to be known who does, and nobody else may read along.
bool IsExposed(const StatusSettings& settings);

}  // namespace nordkeep
