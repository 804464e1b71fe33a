#pragma once

#include "console/lists/RowModel.h"

#include <algorithm>
#include <deque>
#include <utility>

namespace nordkeep {

/// A list that grows at its end and forgets its beginning. What is added is shown at the next Flush.
template <class Row>
class TailRows : public RowModel {
 public:
    void SetLimit(int most) {
        most_ = static_cast<std::size_t>(most > 0 ? most : 1);
        Flush();
    }
    void Clear() {
        coming_.clear();
        if (rows_.empty()) return;
        TellRoundBegins();
        Tell({RowChange::Kind::Reset}, [this] { Drop(rows_.size()); });
        TellRoundEnds();
    }

    int RowCount() const override { return static_cast<int>(rows_.size()); }
    /// The place in the order of all rows there have ever been.
    Text KeyOf(int row) const override {
        return At(row) ? std::to_string(firstKey_ + static_cast<std::uint64_t>(row)) : Text();
    }
    int RowOf(TextView key) const override {
        std::uint64_t number = 0;
        for (const char digit : key) number = number * 10 + static_cast<std::uint64_t>(digit - '0');
        return number >= firstKey_ && number - firstKey_ < rows_.size() ? static_cast<int>(number - firstKey_)
                                                                        : -1;
    }

    void Flush() override {
        const std::size_t count = rows_.size() + coming_.size();
        if (coming_.empty() && count <= most_) return;
        TellRoundBegins();
        const std::size_t toDrop = std::min(count > most_ ? count - most_ : 0, rows_.size());
        if (toDrop > 0) {
            Tell({RowChange::Kind::Remove, 0, static_cast<int>(toDrop) - 1}, [&] { Drop(toDrop); });
        }
        firstKey_ += std::exchange(skipped_, 0);
        if (!coming_.empty()) {
            const int first = RowCount();
            Tell({RowChange::Kind::Insert, first, first + static_cast<int>(coming_.size()) - 1}, [this] {
                rows_.insert(rows_.end(), coming_.begin(), coming_.end());
                coming_.clear();
            });
        }
        TellRoundEnds();
    }

 protected:
    const Row* At(int row) const {
        return row >= 0 && row < RowCount() ? &rows_[static_cast<std::size_t>(row)] : nullptr;
    }
    void Add(Row row) {
        coming_.push_back(std::move(row));
        if (coming_.size() > most_) {
            coming_.pop_front();
            ++skipped_;
        }
    }

 private:
    void Drop(std::size_t count) {
        rows_.erase(rows_.begin(), rows_.begin() + static_cast<std::ptrdiff_t>(count));
        firstKey_ += count;
    }

    std::size_t most_ = 1000;
    std::deque<Row> rows_{};
    std::deque<Row> coming_{};
    std::uint64_t firstKey_ = 1;
    std::uint64_t skipped_ = 0;  // rows that were forgotten before they were shown
};

}  // namespace nordkeep
