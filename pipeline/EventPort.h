#pragma once

#include "runtime/SettingRow.h"
#include "translation/PortBinding.h"

namespace nordkeep {

/// What the intake reads of a reception port. A priority below 0 means none.
struct EventPort {
    Text PortName{};
    Text m_PortDescription{};
    int m_DefaultPrio = -1;
    int m_DefaultSIAPrioN = 0;
    int m_DefaultSIAPrioO = 0;
    int m_DefaultTorvexAckSMSPrio = 1;
    bool m_UseSenderAsIDCode = false;
    Text m_CLIdUnknownIDCodeAliveTestType{"00"};
    Text m_CLIdUnknownIDCodeAliveTestPrio{"-1"};
    Text m_CLIdTranslatedSIAAliveTestTypeReset{"99"};
    Text m_CLIdTranslatedContactIDAliveTestTypeReset{"99"};
    Text m_CLIdTranslatedDefaultAliveTestTypeReset{"99"};
    PortBinding binding{};
};

std::span<const SettingRow<EventPort>> EventPortRows();

}  // namespace nordkeep
