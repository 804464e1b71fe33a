#pragma once

#include "ports/formats/RobofonExport.h"
#include "translation/TelegramExport.h"

#include <map>
#include <memory>

namespace nordkeep {

/// The export queues of all ports.
class ExportQueues final : public TelegramExport {
 public:
    /// In place of the queue that this port had before, whose telegrams it takes over.
    void Add(const Text& portName, std::shared_ptr<RobofonExport> queue) {
        auto& place = queues_[portName];
        if (place) queue->TakeOver(*place);
        place = std::move(queue);
    }
    void ExportTelegram(const Text& alarmCode, const Text& protocol) override {
        for (const auto& [portName, queue] : queues_) queue->Add(alarmCode, protocol);
    }

 private:
    std::map<Text, std::shared_ptr<RobofonExport>> queues_{};
};

}  // namespace nordkeep
