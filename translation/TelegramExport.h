#pragma once

#include "platform/Text.h"

namespace nordkeep {

/// Passes a silent object on to other receivers; realised by the ports.
class TelegramExport {
 public:
    virtual ~TelegramExport() = default;
    /// Queues a telegram on every port that exports telegrams.
    virtual void ExportTelegram(const Text& alarmCode, const Text& protocol) = 0;
};

class NoTelegramExport final : public TelegramExport {
 public:
    void ExportTelegram(const Text&, const Text&) override {}
};

}  // namespace nordkeep
