#pragma once

#include "console/PrintDocument.h"
#include "console/views/ViewParts.h"

#include <functional>

class QCheckBox;
class QFontComboBox;
class QSpinBox;

namespace nordkeep {

/// The choice of the font in which pages are printed.
class PrinterFontDialog final : public QDialog {
 public:
    /// `choose` takes the settings with the new font.
    PrinterFontDialog(const PrinterSettings& settings, const Captions& captions,
                      std::function<void(const PrinterSettings&)> choose, QWidget* parent = nullptr);

 private:
    PrinterSettings Chosen() const;
    void ShowSample();

    PrinterSettings settings_;
    QFontComboBox* name_ = nullptr;
    QSpinBox* size_ = nullptr;
    QCheckBox* bold_ = nullptr;
    QCheckBox* italic_ = nullptr;
    QLabel* sample_ = nullptr;
};

}  // namespace nordkeep
