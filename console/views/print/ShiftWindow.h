#pragma once

#include "console/print/ShiftList.h"
#include "console/views/lists/ViewParts.h"

#include <functional>

namespace nordkeep {

/// What one shift tells the next, as it was when the window was opened.
class ShiftWindow final : public QDialog {
 public:
    /// `print` takes the list to paper.
    ShiftWindow(const ShiftList& list, const Captions& captions, std::function<void()> print,
                QWidget* parent = nullptr);
};

}  // namespace nordkeep
