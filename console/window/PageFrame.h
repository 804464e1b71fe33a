#pragma once

#include "console/window/MainBoxView.h"

namespace nordkeep {

/// The window as its pages know it.
class PageFrame {
 public:
    virtual ~PageFrame() = default;
    virtual Tab CurrentTab() const = 0;
    virtual const ViewState& Checked() const = 0;
    virtual void ShowTab(Tab tab) = 0;
    /// A page has changed: commands and texts follow.
    virtual void PageChanged() = 0;
    virtual MainBoxView& View() = 0;
};

}  // namespace nordkeep
