#pragma once

#include "ports/formats/RobofonExport.h"
#include "translation/TelegramExport.h"

#include <memory>
#include <vector>

namespace nordkeep {

/// The export queues of all ports.
class ExportQueues final : public TelegramExport {
 public:
    void Add(std::shared_ptr<RobofonExport> queue) { queues_.push_back(std::move(queue)); }
    void ExportTelegram(const Text& alarmCode, const Text& protocol) override {
        for (const auto& queue : queues_) queue->Add(alarmCode, protocol);
    }

 private:
    std::vector<std::shared_ptr<RobofonExport>> queues_{};
};

}  // namespace nordkeep
