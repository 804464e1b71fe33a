#pragma once

#include "console/views/boxes/CommentWindow.h"
#include "console/views/window/MainWindow.h"

#include <QtWidgets/QDockWidget>

namespace nordkeep {

/// Where the comment sheet stands: right of the lists, which it makes narrower and never covers, or in a
/// window of its own. Its settings say where; without a word there it stands beside them where there is room.
class SheetDock final : public QDockWidget {
 public:
    struct Needs {
        MainWindow& window;
        CommentWindow& sheet;
        const ConsoleSettings& settings;
        UserStore& store;  // its width
        /// The operator has moved it: the setting is to say so.
        std::function<void(bool isBeside)> keep;
    };
    explicit SheetDock(const Needs& needs);

    void SaveWidth();

 private:
    bool IsWanted() const;
    void Place(bool isBeside);
    void ShowSheet(bool takesFocus);
    void HideSheet();
    void Move();

    Needs needs_;
    bool isBeside_ = false;
};

}  // namespace nordkeep
