#pragma once

#include "app/WindowSystem.h"
#include "console/views/boxes/QtDialogs.h"

namespace nordkeep {

/// The windows of the operator's program.
class QtWindows final : public WindowSystem {
 public:
    std::unique_ptr<QCoreApplication> MakeApplication(int& argc, char** argv) override;
    Dialogs& Questions() override { return dialogs_; }
    std::unique_ptr<ProgramWindow> MakeWindow(Centre& centre, Foundation& foundation,
                                              bool isAttended) override;

 private:
    QtDialogs dialogs_{};
};

}  // namespace nordkeep
