#include "console/views/boxes/PrinterFontDialog.h"

#include "console/lists/SharedCaptions.h"

#include <QtWidgets/QCheckBox>
#include <QtWidgets/QFontComboBox>
#include <QtWidgets/QFormLayout>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QSpinBox>

namespace nordkeep {
namespace {

constexpr int kCaptionTitle = 3050;
constexpr int kCaptionFont = 3760;
constexpr int kCaptionSize = 3761;
constexpr int kCaptionBold = 3762;
constexpr int kCaptionItalic = 3763;
constexpr int kCommonSize = 10;  // points

}  // namespace

PrinterFontDialog::PrinterFontDialog(const PrinterSettings& look, const Captions& captions, Chosen chosen,
                                     QWidget* parent)
    : QDialog(parent),
      look_(look),
      chosen_(std::move(chosen)),
      name_(new QFontComboBox),
      size_(new QSpinBox),
      bold_(new QCheckBox(CaptionText(captions, kCaptionBold))),
      italic_(new QCheckBox(CaptionText(captions, kCaptionItalic))),
      sample_(NewLabel(QStringLiteral("0123456789  ABC  abc  \u00C5\u00C4\u00D6"))) {
    setWindowTitle(PlainCaption(captions, kCaptionTitle));
    if (!look.FontName.empty()) name_->setCurrentFont(QFont(ShownLine(look.FontName)));
    size_->setRange(6, 36);
    size_->setValue(look.FontSize > 0 ? look.FontSize : kCommonSize);
    bold_->setChecked(look.FontBold);
    italic_->setChecked(look.FontItalic);
    sample_->setMinimumHeight(64);
    auto* form = new QFormLayout(this);
    form->addRow(CaptionText(captions, kCaptionFont), name_);
    form->addRow(CaptionText(captions, kCaptionSize), size_);
    form->addRow({}, bold_);
    form->addRow({}, italic_);
    form->addRow(sample_);
    auto* buttons = new QHBoxLayout;
    QPushButton* save = NewButton(captions, kCaptionSave);
    QPushButton* cancel = NewButton(captions, kCaptionBack);
    buttons->addStretch();
    buttons->addWidget(save);
    buttons->addWidget(cancel);
    form->addRow(buttons);
    connect(save, &QPushButton::clicked, this, [this] { Choose(); });
    connect(cancel, &QPushButton::clicked, this, &QDialog::close);
    connect(name_, &QFontComboBox::currentFontChanged, this, [this] { ShowSample(); });
    connect(size_, &QSpinBox::valueChanged, this, [this] { ShowSample(); });
    for (QCheckBox* box : {bold_, italic_}) connect(box, &QCheckBox::toggled, this, [this] { ShowSample(); });
    ShowSample();
}

QFont PrinterFontDialog::Font() const {
    QFont font = name_->currentFont();
    font.setPointSize(size_->value());
    font.setBold(bold_->isChecked());
    font.setItalic(italic_->isChecked());
    return font;
}

void PrinterFontDialog::ShowSample() {
    sample_->setFont(Font());
}

void PrinterFontDialog::Choose() {
    look_.FontName = TypedText(name_->currentFont().family());
    look_.FontSize = size_->value();
    look_.FontBold = bold_->isChecked();
    look_.FontItalic = italic_->isChecked();
    chosen_(look_);
    close();
}

}  // namespace nordkeep
