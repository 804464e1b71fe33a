#include "ports/PortSettings.h"

#include <array>

namespace nordkeep {
namespace {

constexpr SettingScope kPort = SettingScope::Port;
constexpr const char* kGeneral = "General";

const std::array kLine = {
    SettingRow<LineSettings>{kGeneral, "PortDescription", "", kPort, &LineSettings::PortDescription},
    SettingRow<LineSettings>{kGeneral, "PortType", "", kPort, &LineSettings::PortType},
    SettingRow<LineSettings>{kGeneral, "MessageFormat", "0", kPort, &LineSettings::MessageFormat},
    SettingRow<LineSettings>{kGeneral, "PortNumber", "0", kPort, &LineSettings::PortNumber},
    SettingRow<LineSettings>{kGeneral, "PortSetting", "0", kPort, &LineSettings::PortSetting},
    SettingRow<LineSettings>{kGeneral, "BindSocketToAddress", "", kPort, &LineSettings::BindSocketToAddress},
    SettingRow<LineSettings>{kGeneral, "Handshaking", "0", kPort, &LineSettings::Handshaking},
    SettingRow<LineSettings>{kGeneral, "ClosePortIfTorvexIsLost", "0", kPort,
                             &LineSettings::ClosePortIfTorvexIsLost},
    SettingRow<LineSettings>{kGeneral, "ClosePortWhenNoNetworkClientsAreConnected", "-1", kPort,
                             &LineSettings::ClosePortWhenNoNetworkClientsAreConnected, -1, 2'000'000},
    SettingRow<LineSettings>{kGeneral, "ReopenInterval", "0", kPort, &LineSettings::ReopenInterval, 0,
                             2'000'000},
    SettingRow<LineSettings>{kGeneral, "AutoPurgeBufferTime", "5", kPort, &LineSettings::AutoPurgeBufferTime,
                             0, 2'000'000},
};

const std::array kSupervision = {
    SettingRow<SupervisionSettings>{kGeneral, "TestTelegramInterval", "-1", kPort,
                                    &SupervisionSettings::TestTelegramInterval},
    SettingRow<SupervisionSettings>{kGeneral, "TestTelegramAlarmCode", "", SettingScope::Centre,
                                    &SupervisionSettings::TestTelegramAlarmCode},
    SettingRow<SupervisionSettings>{kGeneral, "TestTelegramRestoreCode", "", SettingScope::Centre,
                                    &SupervisionSettings::TestTelegramRestoreCode},
};

const std::array kEventPort = {
    SettingRow<EventPort>{kGeneral, "DefaultPrio", "-1", kPort, &EventPort::m_DefaultPrio, -32768, 32767},
    SettingRow<EventPort>{kGeneral, "DefaultSIAPrioN", "0", kPort, &EventPort::m_DefaultSIAPrioN, -32768,
                          32767},
    SettingRow<EventPort>{kGeneral, "DefaultSIAPrioO", "0", kPort, &EventPort::m_DefaultSIAPrioO, -32768,
                          32767},
    SettingRow<EventPort>{kGeneral, "DefaultTorvexAckSMSPrio", "1", kPort,
                          &EventPort::m_DefaultTorvexAckSMSPrio, -32768, 32767},
    SettingRow<EventPort>{kGeneral, "UseSenderAsIDCode", "0", kPort, &EventPort::m_UseSenderAsIDCode},
    SettingRow<EventPort>{kGeneral, "CLIdUnknownIDCodeAliveTestType", "00", kPort,
                          &EventPort::m_CLIdUnknownIDCodeAliveTestType},
    SettingRow<EventPort>{kGeneral, "CLIdUnknownIDCodeAliveTestPrio", "-1", kPort,
                          &EventPort::m_CLIdUnknownIDCodeAliveTestPrio},
    SettingRow<EventPort>{kGeneral, "CLIdTranslatedSIAAliveTestTypeReset", "99", kPort,
                          &EventPort::m_CLIdTranslatedSIAAliveTestTypeReset},
    SettingRow<EventPort>{kGeneral, "CLIdTranslatedContactIDAliveTestTypeReset", "99", kPort,
                          &EventPort::m_CLIdTranslatedContactIDAliveTestTypeReset},
    SettingRow<EventPort>{kGeneral, "CLIdTranslatedDefaultAliveTestTypeReset", "99", kPort,
                          &EventPort::m_CLIdTranslatedDefaultAliveTestTypeReset},
};

const std::array kRobofon = {
    SettingRow<RobofonSettings>{kGeneral, "TimeStampFromRBM", "", kPort, &RobofonSettings::TimeStampFromRBM},
};

const std::array kTextTelegram = {
    SettingRow<TextTelegramSettings>{kGeneral, "WrapWithSTXETX", "1", kPort,
                                     &TextTelegramSettings::WrapWithSTXETX},
    SettingRow<TextTelegramSettings>{kGeneral, "RequireNumericIdCode", "1", kPort,
                                     &TextTelegramSettings::RequireNumericIdCode},
};

const std::array kCleaning = {
    SettingRow<TextCleaning>{kGeneral, "DOS7bitASCIItoISOLatin1", "0", kPort,
                             &TextCleaning::DOS7bitASCIItoISOLatin1},
    SettingRow<TextCleaning>{kGeneral, "DOS8bitASCIItoISOLatin1", "0", kPort,
                             &TextCleaning::DOS8bitASCIItoISOLatin1},
    SettingRow<TextCleaning>{kGeneral, "AdjustTabAndSpace", "0", kPort, &TextCleaning::AdjustTabAndSpace},
    SettingRow<TextCleaning>{kGeneral, "TextCrLfReplaceCharacter", "32", kPort,
                             &TextCleaning::TextCrLfReplaceCharacter},
};

}  // namespace

std::span<const SettingRow<LineSettings>> LineSettingRows() {
    return kLine;
}
std::span<const SettingRow<SupervisionSettings>> SupervisionSettingRows() {
    return kSupervision;
}
std::span<const SettingRow<EventPort>> EventPortRows() {
    return kEventPort;
}
std::span<const SettingRow<RobofonSettings>> RobofonSettingRows() {
    return kRobofon;
}
std::span<const SettingRow<TextTelegramSettings>> TextTelegramSettingRows() {
    return kTextTelegram;
}
std::span<const SettingRow<TextCleaning>> TextCleaningRows() {
    return kCleaning;
}

LineSettings LoadLineSettings(const Settings& files, const Text& portName) {
    LineSettings line = LoadSettings(files, LineSettingRows(), portName);
    line.PortDescription = TrimBlanks(line.PortDescription);
    if (line.PortDescription.empty()) line.PortDescription = portName;
    line.BindSocketToAddress = TrimBlanks(line.BindSocketToAddress);
    return line;
}

SupervisionSettings LoadSupervisionSettings(const Settings& files, const Text& portName,
                                            MessageFormat format) {
    SupervisionSettings settings = LoadSettings(files, SupervisionSettingRows(), portName);
    // A modem is asked at longer intervals than these, so a shorter limit would report every pause.
    constexpr int kShortestOfModem = 20;
    const bool isModem = format == MessageFormat::GSM;
    if (isModem && settings.TestTelegramInterval >= 1 && settings.TestTelegramInterval < kShortestOfModem) {
        settings.TestTelegramInterval = kShortestOfModem;
    }
    const auto own = [&](const char* key, const Text& ofCentre) {
        return files.ReadPortIni(kGeneral, key, ofCentre, portName);
    };
    settings.TestTelegramAlarmCode = own("TestTelegramAlarmCode", settings.TestTelegramAlarmCode);
    settings.TestTelegramRestoreCode = own("TestTelegramRestoreCode", settings.TestTelegramRestoreCode);
    return settings;
}

TextTelegramSettings LoadTextTelegramSettings(const Settings& files, const Text& portName) {
    TextTelegramSettings settings = LoadSettings(files, TextTelegramSettingRows(), portName);
    settings.cleaning = LoadTextCleaning(files, portName);
    return settings;
}

TextCleaning LoadTextCleaning(const Settings& files, const Text& portName) {
    TextCleaning cleaning = LoadSettings(files, TextCleaningRows(), portName);
    constexpr int kBlank = 32;
    cleaning.TextCrLfReplaceCharacter = CharacterOr(cleaning.TextCrLfReplaceCharacter, kBlank);
    return cleaning;
}

int CharacterOr(int code, int byDefault) {
    return code < 0 || code > 255 ? byDefault : code;
}

}  // namespace nordkeep
