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
        if (retired_.first == portName && retired_.second) queue->TakeOver(*retired_.second);
        queues_[portName] = std::move(queue);
    }
    /// The port is about to be made anew, or to go: nothing more is queued for it as it was.
    void Retire(const Text& portName) {
        auto queue = queues_.extract(portName);
        retired_ = {portName, queue.empty() ? nullptr : std::move(queue.mapped())};
    }
    /// How many telegrams of the retired port nobody has taken over; they are gone.
    std::size_t DropRetired() {
        const auto queue = std::exchange(retired_.second, nullptr);
        return queue ? queue->Size() : 0;
    }
    void ExportTelegram(const Text& alarmCode, const Text& protocol) override {
        for (const auto& [portName, queue] : queues_) queue->Add(alarmCode, protocol);
    }

 private:
    std::map<Text, std::shared_ptr<RobofonExport>> queues_{};
    std::pair<Text, std::shared_ptr<RobofonExport>> retired_{};
};

}  // namespace nordkeep
