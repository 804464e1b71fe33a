#include "console/views/print/PrintJobs.h"

#include "platform/qt/QtText.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QTemporaryFile>
#include <QtGui/QPageSize>
#include <QtGui/QPainter>
#include <QtGui/QPdfWriter>

namespace nordkeep {
namespace {

constexpr int kTickMs = 20;
constexpr const char* kNoSpooler = "lp, lpr";

/// The words of a spooler's command; the two that there are name a printer differently.
std::vector<std::string> WordsFor(const std::string& spooler, const std::string& printer,
                                  const std::string& path) {
    if (printer.empty()) return {path};
    return {spooler == "lpr" ? "-P" : "-d", printer, path};
}

}  // namespace

struct PrintJobs::Job {
    Job(PageLayout pages, QString file, Done whenDone)
        : layout(std::move(pages)), path(std::move(file)), done(std::move(whenDone)), writer(path) {}

    PageLayout layout;
    QString path;
    Done done;
    QPdfWriter writer;
    QPainter painter{};
    int page = 0;
    bool isToBePrinted = false;
    std::string printer{};
    bool isAtSpooler = false;
    ChildProcess spooler{};
    Text failure{};
};

PrintJobs::PrintJobs() {
    QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { Tick(); });
}

PrintJobs::~PrintJobs() {
    for (const auto& job : jobs_) {
        if (job->painter.isActive()) job->painter.end();
        if (job->isToBePrinted) QFile::remove(job->path);
    }
}

void PrintJobs::Print(PageLayout layout, const QString& title, const std::string& printer, Done done) {
    QTemporaryFile place(QDir::tempPath() + QStringLiteral("/nordkeep-XXXXXX.pdf"));
    place.setAutoRemove(false);
    place.open();
    auto job = std::make_unique<Job>(std::move(layout), place.fileName(), std::move(done));
    job->isToBePrinted = true;
    job->printer = printer;
    Add(std::move(job), title);
}

void PrintJobs::SavePdf(PageLayout layout, const QString& path, Done done) {
    Add(std::make_unique<Job>(std::move(layout), path, std::move(done)), path);
}

void PrintJobs::Add(std::unique_ptr<Job> job, const QString& title) {
    const QSizeF size = job->layout.PageSize() / PageLayout::kResolution;
    job->writer.setResolution(PageLayout::kResolution);
    job->writer.setPageSize(QPageSize(size, QPageSize::Inch));
    job->writer.setPageMargins(QMarginsF());
    job->writer.setTitle(title);
    if (!job->painter.begin(&job->writer)) job->failure = FromQString(job->path);
    jobs_.push_back(std::move(job));
    if (!timer_.isActive()) timer_.start(kTickMs);
}

void PrintJobs::Tick() {
    // Jobs that are over leave the list before they are told, since who is told may print again.
    std::vector<std::unique_ptr<Job>> over;
    for (auto& job : jobs_) {
        if (Advance(*job)) over.push_back(std::move(job));
    }
    std::erase(jobs_, nullptr);
    if (jobs_.empty()) timer_.stop();
    for (const auto& job : over) {
        if (job->isToBePrinted) QFile::remove(job->path);
        job->done(job->failure);
    }
}

bool PrintJobs::Advance(Job& job) {
    if (!job.failure.empty()) return true;
    if (job.isAtSpooler) {
        if (job.spooler.IsRunning()) return false;
        if (!job.spooler.HasSucceeded()) job.failure = FromUtf8(spoolers_.front());
        return true;
    }
    if (job.page > 0) job.writer.newPage();
    job.layout.Paint(job.painter, job.page++);
    if (job.page < job.layout.PageCount()) return false;
    job.painter.end();
    return !job.isToBePrinted || !StartSpooler(job);
}

bool PrintJobs::StartSpooler(Job& job) {
    for (const std::string& program : spoolers_) {
        job.isAtSpooler = job.spooler.Start(program, WordsFor(program, job.printer, job.path.toStdString()));
        if (job.isAtSpooler) return true;
    }
    job.failure = kNoSpooler;
    return false;
}

}  // namespace nordkeep
