#pragma once

#include "pipeline/EventPort.h"
#include "ports/formats/Robofon.h"
#include "ports/formats/TextTelegram.h"
#include "runtime/Protocol.h"
#include "runtime/SettingTable.h"

namespace nordkeep {

/// How a port reaches its line, and when it is to be open.
struct LineSettings {
    Text PortDescription{};  // equals the port's name when the key is blank
    Text PortType{};
    int MessageFormat = 0;
    int PortNumber = 0;  // COM number, TCP or UDP port
    Text PortSetting{};  // by type: line settings, host, URL, path
    Text BindSocketToAddress{};
    int Handshaking = 0;
    bool ClosePortIfTorvexIsLost = false;
    int ClosePortWhenNoNetworkClientsAreConnected = -1;  // seconds; negative is off
    int ReopenInterval = 0;                              // seconds between open attempts
    int AutoPurgeBufferTime = 5;                         // seconds of silence; 0 or less is off
};

/// The test telegrams that prove a line alive.
struct SupervisionSettings {
    int TestTelegramInterval = -1;  // seconds of silence allowed; 0 and less is off
    Text TestTelegramAlarmCode{};
    Text TestTelegramRestoreCode{};
};

std::span<const SettingRow<LineSettings>> LineSettingRows();
std::span<const SettingRow<SupervisionSettings>> SupervisionSettingRows();
std::span<const SettingRow<EventPort>> EventPortRows();
std::span<const SettingRow<RobofonSettings>> RobofonSettingRows();
std::span<const SettingRow<TextTelegramSettings>> TextTelegramSettingRows();
std::span<const SettingRow<TextCleaning>> TextCleaningRows();

LineSettings LoadLineSettings(const Settings& files, const Text& portName);
/// The codes default to the keys of the same name of the whole centre.
SupervisionSettings LoadSupervisionSettings(const Settings& files, const Text& portName,
                                            MessageFormat format);
TextTelegramSettings LoadTextTelegramSettings(const Settings& files, const Text& portName);
TextCleaning LoadTextCleaning(const Settings& files, const Text& portName);
/// A character code of a settings file; the default for what is none of 0 to 255.
int CharacterOr(int code, int byDefault);

}  // namespace nordkeep
