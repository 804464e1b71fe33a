#include "console/window/ObjectMenu.h"

#include "runtime/Fields.h"
#include "runtime/ObjectFiles.h"

namespace nordkeep {
namespace {

constexpr int kTextAroundTheClock = 3109;
constexpr int kTextForMinutes = 3110;

}  // namespace

Text ObjectInfoFile(const Text& set, const Text& idCode) {
    return set.empty() ? Text() : InformationFile(set, idCode);
}

std::vector<ObjectMenu::LogOnlyItem> LogOnlyItems(const Captions& captions, TextView ServiceIntervals) {
    std::vector<ObjectMenu::LogOnlyItem> items;
    const std::vector<Text> lengths = Split(ServiceIntervals, ',');
    for (std::size_t i = 0; i < lengths.size(); ++i) {
        const std::int64_t minutes = LeadingNumber(lengths[i]);
        if (minutes <= 0) continue;
        items.push_back({static_cast<int>(i) + 1, captions(kTextForMinutes, {std::to_string(minutes)})});
    }
    items.push_back({0, captions(kTextAroundTheClock)});
    return items;
}

}  // namespace nordkeep
