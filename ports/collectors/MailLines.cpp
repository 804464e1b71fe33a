#include "ports/collectors/MailLines.h"

#include <utility>

namespace nordkeep {

std::optional<MailLine> MailLines::Next(std::size_t longest) {
    const TextView front = received_.Front();
    const std::size_t end = front.find('\n', searched_);
    const std::size_t length = end == TextView::npos ? front.size() : end;
    const bool isTooLong = length > longest;
    if (isTooLong && !std::exchange(isCut_, true)) begun_ = front.substr(0, longest);
    if (end == TextView::npos) {
        searched_ = isCut_ ? 0 : length;
        if (isCut_) received_.Drop(length);
        return std::nullopt;
    }
    MailLine line{isCut_ ? std::move(begun_) : Text(front.substr(0, length)), isCut_};
    std::erase(line.text, '\r');
    received_.Drop(end + 1);
    searched_ = 0;
    isCut_ = false;
    begun_.clear();
    return line;
}

}  // namespace nordkeep
