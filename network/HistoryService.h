#pragma once

#include "network/ClientSlots.h"
#include "network/messages/HistoryMessages.h"
#include "pipeline/Deeds.h"
#include "reports/HistoryWork.h"

#include <array>

namespace nordkeep {

/// The server's history for its clients: what somebody may ask who has logged in there.
class HistoryService {
 public:
    HistoryService(ClientSlots& slots, HistoryWork& work, Deeds& deeds);
    ~HistoryService();
    HistoryService(const HistoryService&) = delete;
    HistoryService& operator=(const HistoryService&) = delete;

    // Who has less than level 1 gets a refusal.
    void Search(int slot, int level, TextView payload);
    void Report(int slot, int level, TextView payload);
    void TakeHandover(int level, const Doer& by, TextView payload);
    /// Who asked there has gone.
    void Forget(int slot);

 private:
    /// One client's answers.
    struct Asker final : HistoryTaker {
        void TakePage(std::int32_t number, const HistoryPage& page) override;
        void TakeReport(std::int32_t number, const AlarmFigures& figures) override;
        ClientSlots* slots = nullptr;
        int slot = 0;
    };

    HistoryWork& work_;
    Deeds& deeds_;
    std::array<Asker, kSlotCount> askers_{};
};

}  // namespace nordkeep
