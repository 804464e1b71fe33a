#include "console/views/print/QtPrintOutput.h"

#include "console/lists/SharedCaptions.h"
#include "runtime/Dates.h"

#include <QtCore/QPointer>
#include <QtGui/QPageSize>

namespace nordkeep {
namespace {

constexpr int kTextCannotPrint = 3516;
constexpr int kCaptionNoPrinter = 3714;
constexpr int kCaptionPrinted = 3715;

}  // namespace

PageLayout QtPrintOutput::LayOut(const PrintDocument& document) const {
    const QSizeF paper = QPageSize(QPageSize::A4).size(QPageSize::Millimeter);
    return {document, paper, ShownLine(GeneralDate(needs_.clock.Now())), needs_.captions};
}

void QtPrintOutput::Log(const Text& failure) {
    needs_.log.WriteSysLog(needs_.captions(kTextCannotPrint) + " " + failure, LogKind::Failure);
}

void QtPrintOutput::Print(const PrintDocument& document) {
    const auto done = [this, document](const Text& failure) {
        if (failure.empty()) return;
        Log(failure);
        if (document.isUnattended) return;
        NewPreview(document)->SetNotice(CaptionText(needs_.captions, kCaptionNoPrinter));
    };
    jobs_.Print(LayOut(document), ShownLine(document.title), ToUtf8(document.printer), done);
}

void QtPrintOutput::Preview(const PrintDocument& document) {
    NewPreview(document);
}

PreviewWindow* QtPrintOutput::NewPreview(const PrintDocument& document) {
    auto* window = new PreviewWindow(LayOut(document), needs_.captions, needs_.parent());
    const QPointer<PreviewWindow> shown = window;
    const auto tell = [this, shown](const Text& failure, int failed, int done) {
        if (!failure.empty()) Log(failure);
        if (shown) {
            shown->SetNotice(CaptionText(needs_.captions, failure.empty() ? done : failed), failure.empty());
        }
    };
    window->onPrint = [this, document, tell] {
        jobs_.Print(LayOut(document), ShownLine(document.title), {},
                    [tell](const Text& failure) { tell(failure, kCaptionNoPrinter, kCaptionPrinted); });
    };
    window->onSave = [this, document, tell](const QString& path) {
        jobs_.SavePdf(LayOut(document), path,
                      [tell](const Text& failure) { tell(failure, kTextCannotPrint, kCaptionSaved); });
    };
    BringToFront(*window, true);
    return window;
}

}  // namespace nordkeep
