#include "console/lists/TranslationMarks.h"

namespace nordkeep {
namespace {

// With more than this a list is painted anew.
constexpr std::size_t kMostObjects = 1000;

}  // namespace

void TranslationMarks::UpdateObjectTreeEntry(cTranslate& set, cIDCode& object) {
    areGlyphsMarked_ = true;
    if (objects_.size() >= kMostObjects) return;
    objects_.push_back({set.m_FileName, object.m_IdCode});
}

}  // namespace nordkeep
