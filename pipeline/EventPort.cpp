#include "pipeline/EventPort.h"

#include <array>

namespace nordkeep {
namespace {

constexpr SettingScope kPort = SettingScope::Port;
constexpr const char* kGeneral = "General";

const std::array kRows = {
    SettingRow<EventPort>{kGeneral, "DefaultPrio", kPort, &EventPort::m_DefaultPrio, -32768, 32767},
    SettingRow<EventPort>{kGeneral, "DefaultSIAPrioN", kPort, &EventPort::m_DefaultSIAPrioN, -32768, 32767},
    SettingRow<EventPort>{kGeneral, "DefaultSIAPrioO", kPort, &EventPort::m_DefaultSIAPrioO, -32768, 32767},
    SettingRow<EventPort>{kGeneral, "DefaultTorvexAckSMSPrio", kPort, &EventPort::m_DefaultTorvexAckSMSPrio,
                          -32768, 32767},
    SettingRow<EventPort>{kGeneral, "UseSenderAsIDCode", kPort, &EventPort::m_UseSenderAsIDCode},
    SettingRow<EventPort>{kGeneral, "CLIdUnknownIDCodeAliveTestType", kPort,
                          &EventPort::m_CLIdUnknownIDCodeAliveTestType},
    SettingRow<EventPort>{kGeneral, "CLIdUnknownIDCodeAliveTestPrio", kPort,
                          &EventPort::m_CLIdUnknownIDCodeAliveTestPrio},
    SettingRow<EventPort>{kGeneral, "CLIdTranslatedSIAAliveTestTypeReset", kPort,
                          &EventPort::m_CLIdTranslatedSIAAliveTestTypeReset},
    SettingRow<EventPort>{kGeneral, "CLIdTranslatedContactIDAliveTestTypeReset", kPort,
                          &EventPort::m_CLIdTranslatedContactIDAliveTestTypeReset},
    SettingRow<EventPort>{kGeneral, "CLIdTranslatedDefaultAliveTestTypeReset", kPort,
                          &EventPort::m_CLIdTranslatedDefaultAliveTestTypeReset},
};

}  // namespace

std::span<const SettingRow<EventPort>> EventPortRows() {
    return kRows;
}

}  // namespace nordkeep
