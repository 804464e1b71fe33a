#include "pipeline/LinePrinter.h"

namespace nordkeep {
namespace {

constexpr int kTextCannotPrint = 1047;
// A printer without paper must not fill the memory.
constexpr std::size_t kMostWaiting = 1 << 18;

}  // namespace

LinePrinter::LinePrinter(NativePath device, PrinterPort& port, SysLog& log, const Language& language)
    : device_(std::move(device)), port_(port), log_(log), language_(language) {}

void LinePrinter::SendPRN(TextView text, const Text& alarmCode) {
    if (text.empty()) return;
    if (waiting_ + text.size() > kMostWaiting) return NoteFailure(alarmCode);
    jobs_.push_back({Text(text), alarmCode});
    waiting_ += text.size();
    Tick();
}

void LinePrinter::Tick() {
    if (jobs_.empty()) return;
    while (!jobs_.empty() && WriteOn()) {
    }
    if (jobs_.empty()) port_.Release();
}

bool LinePrinter::WriteOn() {
    Job& job = jobs_.front();
    const auto written = port_.Write(device_, TextView(job.text).substr(job.written));
    if (written == std::size_t{0}) return false;
    if (!written) {
        NoteFailure(job.alarmCode);
        DropFront();
        return true;
    }
    job.written += *written;
    hasFailed_ = false;
    if (job.written == job.text.size()) DropFront();
    return true;
}

void LinePrinter::DropFront() {
    waiting_ -= jobs_.front().text.size();
    jobs_.pop_front();
}

void LinePrinter::Close() {
    Tick();
    for (; !jobs_.empty(); DropFront()) NoteFailure(jobs_.front().alarmCode);
    port_.Release();
}

void LinePrinter::NoteFailure(const Text& alarmCode) {
    hasFailed_ = true;
    log_.WriteSysLog(language_.GetLanguageText(kTextCannotPrint) + " " + alarmCode, LogKind::Failure);
}

}  // namespace nordkeep
