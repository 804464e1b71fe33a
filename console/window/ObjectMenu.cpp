#include "console/window/ObjectMenu.h"

#include "platform/FileTree.h"
#include "runtime/Fields.h"
#include "runtime/ObjectFiles.h"

#include <algorithm>
#include <unordered_set>

namespace nordkeep {
namespace {

constexpr int kTextAroundTheClock = 3109;
constexpr int kTextForMinutes = 3110;

}  // namespace

Text ObjectInfoFile(const Text& set, const Text& idCode) {
    return set.empty() ? Text() : InformationFile(set, idCode);
}

Text CodeInfoFile(const Text& set, const Text& idCode, const Text& code) {
    return set.empty() ? Text() : TypeInformationFile(set, idCode, code);
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

std::vector<ObjectMenu::CodeItem> MarkedItems(DataFiles& files, const Text& set, const Text& idCode,
                                              std::vector<ObjectMenu::CodeItem> items) {
    if (set.empty() || !IsSafeComponent(idCode)) return items;
    std::unordered_set<Text> known;
    for (const Text& name : files.ScanForFiles("Information\\" + set + "\\" + idCode + "\\*.TXT")) {
        known.insert(UpperCase(TextView(name)));
    }
    for (ObjectMenu::CodeItem& item : items) {
        if (known.contains(UpperCase(TextView(item.code + ".TXT")))) item.caption += " *";
    }
    return items;
}

}  // namespace nordkeep
