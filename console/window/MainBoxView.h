#pragma once

#include "console/window/Commands.h"
#include "platform/Text.h"

namespace nordkeep {

/// What commands ask of the window itself: its rows, its clipboard, and the windows that it makes for the
/// moment.
class WindowRequests {
 public:
    virtual ~WindowRequests() = default;
    virtual void SelectAllRows(Tab tab) = 0;
    virtual void PutOnClipboard(const Text& text) = 0;
    virtual void ShowKeys() = 0;
    virtual void ShowAbout() = 0;
    virtual void ShowFindings() = 0;
    virtual void ClearFilter(Tab tab) = 0;
    virtual void ChoosePrinterFont() = 0;
};

/// Who shows the main window. It asks the model for everything that it shows.
class MainBoxView : public WindowRequests {
 public:
    /// Commands, pages, captions, banners or selections may have changed.
    virtual void ShowState() = 0;
    /// The model has selected rows itself.
    virtual void ShowSelection(Tab tab) = 0;
    /// Brings a row into sight.
    virtual void Reveal(Tab tab, const Text& key) = 0;
    /// Restores a minimised window and brings it to the front, without taking the keys from who types.
    virtual void PopUp() = 0;
};

/// For a copy without a screen, and until the window exists.
class NoMainBoxView final : public MainBoxView {
 public:
    void SelectAllRows(Tab) override {}
    void PutOnClipboard(const Text&) override {}
    void ShowKeys() override {}
    void ShowAbout() override {}
    void ShowFindings() override {}
    void ClearFilter(Tab) override {}
    void ChoosePrinterFont() override {}
    void ShowState() override {}
    void ShowSelection(Tab) override {}
    void Reveal(Tab, const Text&) override {}
    void PopUp() override {}
};

}  // namespace nordkeep
