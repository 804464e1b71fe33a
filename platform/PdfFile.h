#pragma once

#include "platform/Files.h"
#include "platform/Text.h"

#include <memory>
#include <span>

namespace nordkeep {

/// A document of A4 pages with lines of a fixed-width font, made without a screen.
class PdfFile {
 public:
    struct Look {
        Text title{};
        bool isLandscape = false;
        bool isBold = false;
        bool isItalic = false;
        int points = 9;   // of a letter, 4 to 72
        int leftMm = 15;  // margins
        int topMm = 10;
    };
    explicit PdfFile(const Look& look);
    ~PdfFile();
    PdfFile(const PdfFile&) = delete;
    PdfFile& operator=(const PdfFile&) = delete;

    /// How many letters fit beside each other, and how many lines below each other; at least 1.
    std::size_t Columns() const;
    std::size_t Rows() const;
    /// Puts one more page behind the others; what does not fit on it is cut.
    void AddPage(std::span<const Text> lines);
    /// False when the file cannot be written, or a page could not be made before.
    bool Save(const NativePath& path);

 private:
    struct Document;
    std::unique_ptr<Document> document_;
};

}  // namespace nordkeep
