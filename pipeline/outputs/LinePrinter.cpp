#include "pipeline/outputs/LinePrinter.h"

namespace nordkeep {
namespace {

constexpr int kTextCannotPrint = 1047;
constexpr int kTextNoPaper = 5231;
constexpr int kTextOffLine = 5232;
constexpr int kTextFault = 5233;
constexpr int kTextPrintsAgain = 5234;
// A printer without paper must not fill the memory.
constexpr std::size_t kMostWaiting = 1 << 18;

int TextOf(PrinterTrouble trouble) {
    switch (trouble) {
        case PrinterTrouble::NoPaper:
            return kTextNoPaper;
        case PrinterTrouble::OffLine:
            return kTextOffLine;
        case PrinterTrouble::Fault:
            return kTextFault;
        case PrinterTrouble::None:
            break;
    }
    return kTextPrintsAgain;
}

}  // namespace

LinePrinter::LinePrinter(NativePath device, PrinterPort& port, SysLog& log, const Language& language,
                         int alarmsOnPage)
    : device_(std::move(device)), port_(port), log_(log), language_(language), alarmsOnPage_(alarmsOnPage) {}

void LinePrinter::SendPRN(TextView text, const Text& alarmCode) {
    if (text.empty()) return;
    if (waiting_ + text.size() > kMostWaiting) return NoteFailure(alarmCode);
    jobs_.push_back({Text(text), alarmCode});
    if (alarmsOnPage_ > 0 && ++alarmsSincePage_ >= alarmsOnPage_) {
        alarmsSincePage_ = 0;
        jobs_.back().text += '\f';
    }
    waiting_ += jobs_.back().text.size();
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
    if (written == std::size_t{0}) {
        // One that is busy and does not say why may still be without paper.
        if (const PrinterTrouble trouble = port_.Trouble(); trouble != PrinterTrouble::None)
            NoteTrouble(trouble);
        return false;
    }
    if (!written) {
        NoteFailure(job.alarmCode);
        DropFront();
        return true;
    }
    job.written += *written;
    hasFailed_ = false;
    NoteTrouble(PrinterTrouble::None);
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

void LinePrinter::NoteTrouble(PrinterTrouble trouble) {
    if (trouble == trouble_) return;
    trouble_ = trouble;
    const bool isWell = trouble == PrinterTrouble::None;
    log_.WriteSysLog(language_.GetLanguageText(TextOf(trouble)),
                     isWell ? LogKind::Information : LogKind::Failure);
}

void LinePrinter::NoteFailure(const Text& alarmCode) {
    hasFailed_ = true;
    log_.WriteSysLog(language_.GetLanguageText(kTextCannotPrint) + " " + alarmCode, LogKind::Failure);
}

}  // namespace nordkeep
