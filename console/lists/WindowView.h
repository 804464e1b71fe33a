#pragma once

#include "console/lists/OperatorWindows.h"

namespace nordkeep {

/// What a window tells about the last command.
struct WindowNotice {
    Text text{};
    bool isGood = false;  // done, else something to attend to
    friend bool operator==(const WindowNotice&, const WindowNotice&) = default;
};

/// A window of the screen as its model drives it. The model decides; the view shows what the model holds.
class WindowView {
 public:
    virtual ~WindowView() = default;
    /// Shows the window with fresh content, or brings it to the front. What opens by itself takes no focus.
    virtual void Show(OpenedBy by) = 0;
    /// Something that the window shows has changed. What is being typed stays.
    virtual void Refresh() = 0;
    virtual void Close() = 0;
};

/// For a copy without a screen, and until the window exists.
class NoWindowView final : public WindowView {
 public:
    void Show(OpenedBy) override {}
    void Refresh() override {}
    void Close() override {}
};

}  // namespace nordkeep
