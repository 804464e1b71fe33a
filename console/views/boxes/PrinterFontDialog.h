#pragma once

#include "console/print/PrintDocument.h"
#include "console/views/lists/ViewParts.h"

#include <functional>

class QCheckBox;
class QFontComboBox;
class QSpinBox;

namespace nordkeep {

/// The font in which alarms, logs and information are printed.
class PrinterFontDialog final : public QDialog {
 public:
    using Chosen = std::function<void(const PrinterSettings& look)>;
    PrinterFontDialog(const PrinterSettings& look, const Captions& captions, Chosen chosen,
                      QWidget* parent = nullptr);

 private:
    void ShowSample();
    QFont Font() const;
    void Choose();

    PrinterSettings look_;
    Chosen chosen_;
    QFontComboBox* name_ = nullptr;
    QSpinBox* size_ = nullptr;
    QCheckBox* bold_ = nullptr;
    QCheckBox* italic_ = nullptr;
    QLabel* sample_ = nullptr;
};

}  // namespace nordkeep
