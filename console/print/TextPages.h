#pragma once

#include "console/lists/Captions.h"
#include "console/print/PrintDocument.h"
#include "platform/PdfFile.h"

#include <memory>

namespace nordkeep {

/// A document as pages of lines, made without a screen and a few pages at a time: a day can fill hundreds.
class TextPages {
 public:
    /// `printedAt` stands at the foot of each page. The paper is turned when lines are too long for it.
    TextPages(PrintDocument document, Text printedAt, const Captions& captions);

    bool AreDone() const { return nextPage_ == pageCount_; }
    const Text& Title() const { return document_.title; }
    const Text& Printer() const { return document_.printer; }
    /// Makes at most so many more pages: how many it were.
    std::size_t Make(std::size_t pages);
    /// False when the file cannot be written.
    bool Save(const NativePath& path) { return file_->Save(path); }

 private:
    void Open(bool isLandscape);
    void BreakLines();
    std::vector<Text> PageLines(std::size_t page) const;

    PrintDocument document_;
    Text printedAt_;
    const Captions& captions_;
    std::unique_ptr<PdfFile> file_{};
    std::vector<Text> lines_{};
    std::size_t linesOnPage_ = 1;
    std::size_t pageCount_ = 1;
    std::size_t nextPage_ = 0;
};

}  // namespace nordkeep
