#include "console/editors/RowSteps.h"

namespace nordkeep {
namespace {

constexpr std::size_t kMostSteps = 500;

/// Many rows at one go are usual in an import; taking them out one by one would move all behind each.
void Change(std::vector<FileItem>& items, std::size_t place, const std::optional<FileItem>& before,
            const std::optional<FileItem>& after) {
    const auto at = items.begin() + static_cast<std::ptrdiff_t>(place);
    if (before && after) {
        *at = *after;
    } else if (after) {
        items.insert(at, *after);
    } else if (before) {
        items.erase(at);
    }
}

bool IsSame(const FileItem& a, const FileItem& b) {
    return a.text == b.text && a.section == b.section;
}

}  // namespace

void ApplyStep(std::vector<FileItem>& items, const RowStep& step) {
    for (const ItemChange& change : step) Change(items, change.place, change.before, change.after);
}

void TakeBack(std::vector<FileItem>& items, const RowStep& step) {
    for (auto change = step.rbegin(); change != step.rend(); ++change)
        Change(items, change->place, change->after, change->before);
}

void RowSteps::Clear() {
    steps_.clear();
    typedRow_ = 0;
    saved_ = 0;
}

void RowSteps::Note(RowStep step, int typedRow) {
    const int count = static_cast<int>(steps_.size());
    const bool isMore = typedRow != 0 && typedRow == typedRow_ && saved_ != count && step.size() == 1 &&
                        steps_.back().size() == 1 && steps_.back().front().before;
    if (isMore) {
        ItemChange& last = steps_.back().front();
        last.after = step.front().after;
        if (IsSame(*last.before, *last.after)) steps_.pop_back();
        if (steps_.empty() || static_cast<int>(steps_.size()) != count) typedRow_ = 0;
        return;
    }
    if (saved_ > count) saved_ = -1;
    if (steps_.size() == kMostSteps) {
        steps_.erase(steps_.begin());
        saved_ = saved_ > 0 ? saved_ - 1 : -1;
    }
    steps_.push_back(std::move(step));
    typedRow_ = typedRow;
}

RowStep RowSteps::TakeLast() {
    RowStep last = std::move(steps_.back());
    steps_.pop_back();
    typedRow_ = 0;
    return last;
}

void RowSteps::NoteSaved() {
    saved_ = static_cast<int>(steps_.size());
    typedRow_ = 0;
}

}  // namespace nordkeep
