#pragma once

#include "console/views/window/MainWindow.h"
#include "tests/console/MainBoxWorld.h"
#include "tests/doubles/FakeUserStore.h"

namespace nordkeep {

/// What the main window of a world is made of.
inline MainWindow::Needs WindowOf(MainBoxWorld& world, FakeUserStore& store) {
    MainBoxWorld::Running& running = *world.running;
    return {.box = running.box,
            .files = running.files,
            .store = store,
            .side = {.about = {}, .printerLook = running.printerSettings}};
}

}  // namespace nordkeep
