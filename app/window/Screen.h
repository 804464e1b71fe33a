#pragma once

#include "app/Centre.h"
#include "app/WindowSystem.h"
#include "console/views/boxes/QtDialogs.h"
#include "console/views/print/QtPrintOutput.h"
#include "console/views/window/MainWindow.h"
#include "console/views/window/SheetDock.h"
#include "platform/qt/QtUserStore.h"

#include <memory>
#include <vector>

namespace nordkeep {

/// The windows of a copy with a screen, each set behind its model.
class Screen final : public WorkplaceScreen, public ProgramWindow {
 public:
    /// `dialogs`: none when questions are answered without a person.
    Screen(Centre& centre, Foundation& foundation, QtDialogs* dialogs);
    ~Screen() override;
    Screen(const Screen&) = delete;
    Screen& operator=(const Screen&) = delete;

    void Show() override;

    void Beep() override;
    PrintOutput& Printer() override { return printer_; }
    void PrepareForEnd() override;

 private:
    void KeepSheetPlace(bool isBeside);
    void OpenFinding(const Finding& finding);
    void SetBehindModels();

    Centre& centre_;
    Foundation& foundation_;
    QtDialogs* dialogs_;
    QtUserStore store_{};
    QtPrintOutput printer_;
    MainWindow window_;
    std::vector<std::unique_ptr<QDialog>> sheets_{};
    std::unique_ptr<QWidget> picture_{};
    SheetDock* sheetDock_ = nullptr;  // a part of the main window
};

}  // namespace nordkeep
