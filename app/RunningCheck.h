#pragma once

#include "app/CentreCheck.h"
#include "console/window/FindingsSource.h"
#include "platform/EventLoop.h"
#include "runtime/StallWatch.h"
#include "runtime/SysLog.h"

#include <memory>

namespace nordkeep {

/// The check of what people have typed, in a copy that runs: slice by slice between everything else, and what
/// it finds goes to the system log.
class RunningCheck final : public FindingsSource {
 public:
    struct Needs {
        const FileTree& dataFolder;
        const FileTree& programFolder;
        const Language& language;
        Role role;
        EventLoop& loop;
        SysLog& log;
        StallWatch& stalls;
    };
    explicit RunningCheck(const Needs& needs) : needs_(needs) {}

    /// Begins from the front, also when one is under way.
    void Begin();
    /// The program ends.
    void Stop() { check_.reset(); }

    /// Of the last check that has come to its end.
    const std::vector<Finding>& Found() const override { return found_; }
    std::size_t Count() const { return count_; }
    bool AreErrors() const { return areErrors_; }
    /// What they are in: the file that has them all, by its name without ending, else the centre.
    Text Place() const;

 private:
    void PostSlice();
    void RunSlice(int round);
    void Finish();
    void WriteLines() const;

    Needs needs_;
    std::unique_ptr<CentreCheck> check_{};
    int round_ = 0;  // a slice of a check that has been begun anew does nothing
    std::vector<Finding> found_{};
    std::size_t count_ = 0;
    bool areErrors_ = false;
};

}  // namespace nordkeep
