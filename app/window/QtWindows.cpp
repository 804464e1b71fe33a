#include "app/window/QtWindows.h"

#include "app/window/Screen.h"
#include "console/views/lists/Icons.h"
#include "platform/qt/Application.h"

#include <QtWidgets/QApplication>

namespace nordkeep {

std::unique_ptr<QCoreApplication> QtWindows::MakeApplication(int& argc, char** argv) {
    auto application = std::make_unique<QApplication>(argc, argv);
    SettleApplication();
    application->setQuitOnLastWindowClosed(false);
    application->setWindowIcon(ProgramIcon());
    return application;
}

std::unique_ptr<ProgramWindow> QtWindows::MakeWindow(Centre& centre, Foundation& foundation,
                                                     bool isAttended) {
    return std::make_unique<Screen>(centre, foundation, isAttended ? &dialogs_ : nullptr);
}

}  // namespace nordkeep
