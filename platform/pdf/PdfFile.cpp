#include "platform/PdfFile.h"

#include <hpdf.h>

#include <algorithm>
#include <string>

namespace nordkeep {
namespace {

constexpr float kPointsInMm = 72.0F / 25.4F;
constexpr float kShortSideMm = 210;
constexpr float kLongSideMm = 297;
// Of the letters' size; all letters of the font are as wide.
constexpr float kWidth = 0.6F;
constexpr float kLineHeight = 1.2F;
constexpr int kSmallest = 4;
constexpr int kLargest = 72;

const char* FontName(const PdfFile::Look& look) {
    if (look.isBold) return look.isItalic ? "Courier-BoldOblique" : "Courier-Bold";
    return look.isItalic ? "Courier-Oblique" : "Courier";
}

/// What the library finds wrong stays in the document's state, which the end asks for.
void IgnoreHere(HPDF_STATUS, HPDF_STATUS, void*) {}

std::size_t Whole(float number) {
    return static_cast<std::size_t>(std::max(number, 1.0F));
}

}  // namespace

struct PdfFile::Document {
    explicit Document(const Look& given) : look(given), pdf(HPDF_New(IgnoreHere, nullptr)) {
        look.points = std::clamp(look.points, kSmallest, kLargest);
        if (pdf == nullptr) return;
        HPDF_SetCompressionMode(pdf, HPDF_COMP_ALL);
        HPDF_SetInfoAttr(pdf, HPDF_INFO_TITLE, std::string(look.title).c_str());
        font = HPDF_GetFont(pdf, FontName(look), "WinAnsiEncoding");
    }
    ~Document() {
        if (pdf != nullptr) HPDF_Free(pdf);
    }
    Document(const Document&) = delete;
    Document& operator=(const Document&) = delete;

    float WidthMm() const { return look.isLandscape ? kLongSideMm : kShortSideMm; }
    float HeightMm() const { return look.isLandscape ? kShortSideMm : kLongSideMm; }
    float Points() const { return static_cast<float>(look.points); }
    float LeftMm() const { return static_cast<float>(look.leftMm); }
    float TopMm() const { return static_cast<float>(look.topMm); }

    Look look;
    HPDF_Doc pdf;
    HPDF_Font font = nullptr;
};

PdfFile::PdfFile(const Look& look) : document_(std::make_unique<Document>(look)) {}

PdfFile::~PdfFile() = default;

std::size_t PdfFile::Columns() const {
    const Document& d = *document_;
    return Whole((d.WidthMm() - 2 * d.LeftMm()) * kPointsInMm / (d.Points() * kWidth));
}

std::size_t PdfFile::Rows() const {
    const Document& d = *document_;
    return Whole((d.HeightMm() - 2 * d.TopMm()) * kPointsInMm / (d.Points() * kLineHeight));
}

void PdfFile::AddPage(std::span<const Text> lines) {
    const Document& d = *document_;
    if (d.pdf == nullptr || d.font == nullptr) return;
    const HPDF_Page page = HPDF_AddPage(d.pdf);
    if (page == nullptr) return;
    HPDF_Page_SetWidth(page, d.WidthMm() * kPointsInMm);
    HPDF_Page_SetHeight(page, d.HeightMm() * kPointsInMm);
    HPDF_Page_BeginText(page);
    HPDF_Page_SetFontAndSize(page, d.font, d.Points());
    HPDF_Page_SetTextLeading(page, d.Points() * kLineHeight);
    HPDF_Page_MoveTextPos(page, d.LeftMm() * kPointsInMm,
                          (d.HeightMm() - d.TopMm()) * kPointsInMm - d.Points());
    for (const Text& line : lines.first(std::min(lines.size(), Rows()))) {
        HPDF_Page_ShowText(page, Text(TextView(line).substr(0, Columns())).c_str());
        HPDF_Page_MoveToNextLine(page);
    }
    HPDF_Page_EndText(page);
}

bool PdfFile::Save(const NativePath& path) {
    const Document& d = *document_;
    if (d.pdf == nullptr || d.font == nullptr || HPDF_GetError(d.pdf) != HPDF_OK) return false;
    return HPDF_SaveToFile(d.pdf, path.c_str()) == HPDF_OK;
}

}  // namespace nordkeep
