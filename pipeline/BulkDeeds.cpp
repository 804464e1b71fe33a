#include "pipeline/BulkDeeds.h"

#include <utility>

namespace nordkeep {

// The next slice comes when a timer says so, which tells nothing about how long this one has taken.
void BulkDeeds::Begin(Deed deed) {
    deeds_.push_back({std::move(deed)});
    if (deeds_.size() == 1 && Continue()) slice_.End();
}

bool BulkDeeds::Continue() {
    if (deeds_.empty()) return false;
    slice_.Begin();
    do {
        Running& running = deeds_.front();
        if (running.next < running.deed.count) {
            running.deed.doOne(running.next++);
            slice_.NoteDone(1);
        } else {
            const auto finish = std::move(running.deed.finish);
            deeds_.pop_front();
            finish();
        }
    } while (!deeds_.empty() && !slice_.IsFull());
    if (deeds_.empty()) slice_.End();
    return !deeds_.empty();
}

}  // namespace nordkeep
