#pragma once

#include "console/views/print/PageLayout.h"
#include "platform/ChildProcess.h"

#include <QtCore/QTimer>

#include <functional>
#include <memory>
#include <vector>

namespace nordkeep {

/// Makes documents into PDF files, a page in a turn of the loop, and hands them to the spooler of the system.
/// A printer is never waited for.
class PrintJobs {
 public:
    /// Why a job came to nothing; empty when it has gone well.
    using Done = std::function<void(const Text& failure)>;

    PrintJobs();
    ~PrintJobs();
    PrintJobs(const PrintJobs&) = delete;
    PrintJobs& operator=(const PrintJobs&) = delete;

    /// The programs that take a file to the printer, in the order of trying.
    void UseSpoolers(std::vector<std::string> programs) { spoolers_ = std::move(programs); }
    void Print(PageLayout layout, const QString& title, const std::string& printer, Done done);
    void SavePdf(PageLayout layout, const QString& path, Done done);

 private:
    struct Job;

    void Add(std::unique_ptr<Job> job, const QString& title);
    void Tick();
    /// True when the job is over.
    bool Advance(Job& job);
    bool StartSpooler(Job& job);

    std::vector<std::string> spoolers_{"lp", "lpr"};
    std::vector<std::unique_ptr<Job>> jobs_{};
    QTimer timer_{};
};

}  // namespace nordkeep
