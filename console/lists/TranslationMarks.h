#pragma once

#include "translation/ObjectViews.h"
#include "translation/Translate.h"

#include <utility>
#include <vector>

namespace nordkeep {

/// What the translations have told since the last tick. It stands before the window that shows it, and on a
/// copy without one nobody asks it.
class TranslationMarks final : public ObjectViews {
 public:
    struct Object {
        Text set{};
        Text idCode{};
    };

    void UpdateObjectTreeEntry(cTranslate& set, cIDCode& object) override;
    void RecalcAliveTestView() override { areGlyphsMarked_ = true; }
    void ClearTree() override { isTreeMarked_ = true; }
    void RebuildTree() override { isTreeMarked_ = areGlyphsMarked_ = true; }

    // Each answers for the time since it was last asked.
    std::vector<Object> TakeObjects() { return std::exchange(objects_, {}); }
    bool TakeGlyphs() { return std::exchange(areGlyphsMarked_, false); }
    bool TakeTree() { return std::exchange(isTreeMarked_, false); }

 private:
    std::vector<Object> objects_{};
    bool areGlyphsMarked_ = false;
    bool isTreeMarked_ = false;
};

}  // namespace nordkeep
