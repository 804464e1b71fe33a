#pragma once

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
    Text m_CLIdUnknownIDCodeAliveTestType{};
    Text m_CLIdUnknownIDCodeAliveTestPrio{};
    Text m_CLIdTranslatedSIAAliveTestTypeReset{};
    Text m_CLIdTranslatedContactIDAliveTestTypeReset{};
    Text m_CLIdTranslatedDefaultAliveTestTypeReset{};
    PortBinding binding{};
};

}  // namespace nordkeep
