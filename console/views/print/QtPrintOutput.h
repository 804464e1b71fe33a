#pragma once

#include "console/views/print/PreviewWindow.h"
#include "console/views/print/PrintJobs.h"
#include "platform/Clock.h"
#include "runtime/SysLog.h"

namespace nordkeep {

/// Printing from the screen. Without a printer a document that an operator asked for is shown, with the
/// choice of a PDF file; every failure is logged.
class QtPrintOutput final : public PrintOutput {
 public:
    struct Needs {
        const Captions& captions;
        const Clock& clock;
        SysLog& log;
        std::function<QWidget*()> parent;
    };
    explicit QtPrintOutput(const Needs& needs) : needs_(needs) {}

    void Print(const PrintDocument& document) override;
    void Preview(const PrintDocument& document) override;
    PrintJobs& Jobs() { return jobs_; }

 private:
    PageLayout LayOut(const PrintDocument& document) const;
    PreviewWindow* NewPreview(const PrintDocument& document);
    void Log(const Text& failure);

    Needs needs_;
    PrintJobs jobs_{};
};

}  // namespace nordkeep
