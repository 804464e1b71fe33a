#pragma once

#include "platform/Text.h"

namespace nordkeep {

/// The bytes of a line that no decoder has consumed yet; dropping from the front is cheap.
class ReceivedText {
 public:
    TextView Front() const { return TextView(text_).substr(start_); }
    std::size_t Size() const { return text_.size() - start_; }
    bool IsEmpty() const { return Size() == 0; }
    void Append(TextView bytes) {
        Compact();
        text_ += bytes;
    }
    void Drop(std::size_t count) { start_ += count < Size() ? count : Size(); }
    void Clear() {
        text_.clear();
        start_ = 0;
    }

 private:
    void Compact() {
        if (start_ < text_.size() && start_ < kWorthCompacting) return;
        text_.erase(0, start_);
        start_ = 0;
    }

    static constexpr std::size_t kWorthCompacting = 65536;

    Text text_{};
    std::size_t start_ = 0;
};

}  // namespace nordkeep
