#include "console/views/boxes/LanguageDialog.h"

#include "console/lists/BilingualTexts.h"

#include <QtWidgets/QBoxLayout>
#include <QtWidgets/QListWidget>

namespace nordkeep {

LanguageDialog::LanguageDialog(const std::vector<LanguageChoice>& choices, QWidget* parent)
    : QDialog(parent), choices_(choices) {
    setWindowTitle(QStringLiteral("Nordkeep"));
    list_ = new QListWidget;
    for (const LanguageChoice& choice : choices_) list_->addItem(ShownLine(choice.name));
    list_->setCurrentRow(0);
    auto* ok = new QPushButton(QString::fromUtf8(kBilingualOk));
    auto* cancel = new QPushButton(QString::fromUtf8(kBilingualCancel));
    ok->setDefault(true);
    ok->setEnabled(!choices_.empty());
    cancel->setAutoDefault(false);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(ok);
    buttons->addWidget(cancel);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(NewHeading(QString::fromUtf8(kBilingualChooseLanguage), list_));
    layout->addWidget(list_);
    layout->addLayout(buttons);
    connect(ok, &QPushButton::clicked, this, &QDialog::accept);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    connect(list_, &QListWidget::itemActivated, this, &QDialog::accept);
    resize(360, 240);
}

std::optional<int> LanguageDialog::Chosen() const {
    const int row = list_->currentRow();
    if (result() != Accepted || row < 0) return std::nullopt;
    return choices_[static_cast<std::size_t>(row)].number;
}

}  // namespace nordkeep
