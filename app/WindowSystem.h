#pragma once

#include "platform/Dialogs.h"

#include <memory>

class QCoreApplication;

namespace nordkeep {

class Centre;
class Foundation;

/// The main window and all that belongs to it, from its making to its end.
class ProgramWindow {
 public:
    virtual ~ProgramWindow() = default;
    virtual void Show() = 0;
};

/// The windows of a program that has them. A program for services has none of this, and links no toolkit of
/// windows.
class WindowSystem {
 public:
    virtual ~WindowSystem() = default;
    /// The application object of a copy with a screen.
    virtual std::unique_ptr<QCoreApplication> MakeApplication(int& argc, char** argv) = 0;
    /// Questions on the screen, also before the main window is there.
    virtual Dialogs& Questions() = 0;
    /// Makes the main window and sets it behind the models of the centre. `isAttended`: whether a person
    /// answers what is asked.
    virtual std::unique_ptr<ProgramWindow> MakeWindow(Centre& centre, Foundation& foundation,
                                                      bool isAttended) = 0;
};

}  // namespace nordkeep
