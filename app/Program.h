#pragma once

namespace nordkeep {

class WindowSystem;

/// What one of the two programs is.
struct ProgramKind {
    const char* name;
    WindowSystem* windows = nullptr;  // none: every start is that of a service
};

/// The program from its start to its end; the exit status.
int RunProgram(int argc, char** argv, const ProgramKind& kind);

}  // namespace nordkeep
