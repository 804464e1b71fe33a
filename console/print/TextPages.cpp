#include "console/print/TextPages.h"

#include <algorithm>

namespace nordkeep {
namespace {

constexpr int kCaptionPage = 3713;
constexpr int kUsualSize = 9;  // points
constexpr int kLeastMarginMm = 10;

}  // namespace

TextPages::TextPages(PrintDocument document, Text printedAt, const Captions& captions)
    : document_(std::move(document)), printedAt_(std::move(printedAt)), captions_(captions) {
    Open(false);
    if (lines_.size() > document_.lines.size()) Open(true);
    pageCount_ = std::max<std::size_t>(1, (lines_.size() + linesOnPage_ - 1) / linesOnPage_);
}

void TextPages::Open(bool isLandscape) {
    const PrinterSettings& look = document_.look;
    file_ = std::make_unique<PdfFile>(PdfFile::Look{.title = document_.title,
                                                    .isLandscape = isLandscape,
                                                    .isBold = look.FontBold,
                                                    .isItalic = look.FontItalic,
                                                    .points = look.FontSize > 0 ? look.FontSize : kUsualSize,
                                                    .leftMm = std::max(look.LeftMargin, kLeastMarginMm),
                                                    .topMm = std::max(look.TopMargin, kLeastMarginMm)});
    // The title and the foot with a line of air each, and the headings.
    const std::size_t around = document_.heading.empty() ? 4 : 5;
    linesOnPage_ = file_->Rows() > around ? file_->Rows() - around : 1;
    BreakLines();
}

void TextPages::BreakLines() {
    const std::size_t columns = file_->Columns();
    lines_.clear();
    for (const Text& line : document_.lines) {
        std::size_t at = 0;
        do {
            lines_.push_back(line.substr(at, columns));
            at += columns;
        } while (at < line.size());
    }
}

std::vector<Text> TextPages::PageLines(std::size_t page) const {
    std::vector<Text> shown{document_.title, {}};
    if (!document_.heading.empty()) shown.push_back(document_.heading);
    const std::size_t first = page * linesOnPage_;
    for (std::size_t at = first; at < first + linesOnPage_; ++at)
        shown.push_back(at < lines_.size() ? lines_[at] : Text());
    shown.emplace_back();
    const Text number = captions_(kCaptionPage, {std::to_string(page + 1), std::to_string(pageCount_)});
    shown.push_back(printedAt_ + "   " + number);
    return shown;
}

std::size_t TextPages::Make(std::size_t pages) {
    const std::size_t end = std::min(pageCount_, nextPage_ + pages);
    const std::size_t made = end - nextPage_;
    while (nextPage_ < end) file_->AddPage(PageLines(nextPage_++));
    return made;
}

}  // namespace nordkeep
