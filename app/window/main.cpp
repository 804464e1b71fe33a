#include "app/Program.h"
#include "app/window/QtWindows.h"

// The operator's program: with a window where there is a screen.
int main(int argc, char** argv) {
    nordkeep::QtWindows windows;
    return nordkeep::RunProgram(argc, argv, {.name = "nordkeep", .windows = &windows});
}
