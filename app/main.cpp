#include "app/Program.h"

// The program for services: it has no windows, and needs nothing of a desktop.
int main(int argc, char** argv) {
    return nordkeep::RunProgram(argc, argv, {.name = "nordkeepd"});
}
