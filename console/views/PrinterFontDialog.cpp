#include "console/views/PrinterFontDialog.h"

#include "platform/qt/QtText.h"

#include <QtGui/QFontDatabase>
#include <QtWidgets/QBoxLayout>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QFontComboBox>
#include <QtWidgets/QFormLayout>
#include <QtWidgets/QSpinBox>

namespace nordkeep {
namespace {

constexpr int kTextOk = 1058;
constexpr int kTextCancel = 1400;
constexpr int kUsualSize = 9;  // points

}  // namespace

PrinterFontDialog::PrinterFontDialog(const PrinterSettings& settings, const Captions& captions,
                                     std::function<void(const PrinterSettings&)> choose, QWidget* parent)
    : QDialog(parent), settings_(settings) {
    setModal(false);
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(PlainCaption(captions, 3050));
    name_ = new QFontComboBox;
    name_->setEditable(false);
    name_->setCurrentFont(settings.FontName.empty() ? QFontDatabase::systemFont(QFontDatabase::FixedFont)
                                                    : QFont(ToQString(settings.FontName)));
    size_ = new QSpinBox;
    size_->setRange(5, 72);
    size_->setValue(settings.FontSize > 0 ? settings.FontSize : kUsualSize);
    bold_ = new QCheckBox(CaptionText(captions, 3718));
    bold_->setChecked(settings.FontBold);
    italic_ = new QCheckBox(CaptionText(captions, 3719));
    italic_->setChecked(settings.FontItalic);
    sample_ = NewDataLabel(QStringLiteral("AaBbCc ÅåÄäÖö 0123456789"));
    sample_->setMinimumSize(320, 60);
    sample_->setAlignment(Qt::AlignCenter);
    auto* form = new QFormLayout;
    form->addRow(NewHeading(CaptionText(captions, 3716), name_), name_);
    form->addRow(NewHeading(CaptionText(captions, 3717), size_), size_);
    form->addRow(bold_);
    form->addRow(italic_);
    auto* ok = new QPushButton(ShownLine(captions.FromFile(kTextOk)));
    ok->setDefault(true);
    auto* cancel = new QPushButton(ShownLine(captions.FromFile(kTextCancel)));
    cancel->setAutoDefault(false);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(ok);
    buttons->addWidget(cancel);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addWidget(sample_, 1);
    layout->addLayout(buttons);
    connect(name_, &QFontComboBox::currentFontChanged, this, [this] { ShowSample(); });
    connect(size_, &QSpinBox::valueChanged, this, [this] { ShowSample(); });
    connect(bold_, &QCheckBox::toggled, this, [this] { ShowSample(); });
    connect(italic_, &QCheckBox::toggled, this, [this] { ShowSample(); });
    connect(ok, &QPushButton::clicked, this, [this, choose = std::move(choose)] {
        choose(Chosen());
        close();
    });
    connect(cancel, &QPushButton::clicked, this, &QDialog::close);
    ShowSample();
}

PrinterSettings PrinterFontDialog::Chosen() const {
    PrinterSettings chosen = settings_;
    chosen.FontName = FromQString(name_->currentFont().family());
    chosen.FontSize = size_->value();
    chosen.FontBold = bold_->isChecked();
    chosen.FontItalic = italic_->isChecked();
    return chosen;
}

void PrinterFontDialog::ShowSample() {
    QFont font(name_->currentFont().family(), size_->value());
    font.setBold(bold_->isChecked());
    font.setItalic(italic_->isChecked());
    sample_->setFont(font);
}

}  // namespace nordkeep
