#include "console/views/boxes/FindingsWindow.h"

#include "console/lists/SharedCaptions.h"

#include <QtWidgets/QBoxLayout>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QTableWidget>

namespace nordkeep {
namespace {

constexpr int kRowPadding = 8;      // px
constexpr int kColumnPadding = 12;  // px

}  // namespace

FindingsWindow::FindingsWindow(std::vector<Finding> findings, const QString& title, const Captions& captions,
                               Opener open, QWidget* parent)
    : QDialog(parent), findings_(std::move(findings)), open_(std::move(open)) {
    setModal(false);
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    setWindowTitle(title);
    table_ = new QTableWidget(static_cast<int>(findings_.size()), 2);
    Fill();
    auto* close = NewButton(captions, kCaptionClose);
    auto* bottom = new QHBoxLayout;
    bottom->addStretch(1);
    bottom->addWidget(close);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(table_, 1);
    layout->addLayout(bottom);
    connect(close, &QPushButton::clicked, this, &QDialog::close);
    connect(table_, &QTableWidget::cellActivated, this, [this](int row, int) {
        if (open_) open_(findings_[static_cast<std::size_t>(row)]);
    });
    resize(900, 420);
}

void FindingsWindow::Fill() {
    table_->horizontalHeader()->hide();
    table_->verticalHeader()->hide();
    table_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table_->setSelectionBehavior(QAbstractItemView::SelectRows);
    table_->setAlternatingRowColors(true);
    table_->setShowGrid(false);
    table_->setTabKeyNavigation(false);
    table_->setWordWrap(false);
    for (int row = 0; row < table_->rowCount(); ++row) {
        const Finding& finding = findings_[static_cast<std::size_t>(row)];
        const QString place =
            ShownLine(finding.line > 0 ? finding.file + ":" + std::to_string(finding.line) : finding.file);
        auto* where = new QTableWidgetItem(place);
        auto* what = new QTableWidgetItem(ShownLine(finding.sentence));
        QFont font = where->font();
        font.setBold(finding.severity == Severity::Error);
        where->setFont(font);
        what->setFont(font);
        what->setToolTip(what->text());
        table_->setItem(row, 0, where);
        table_->setItem(row, 1, what);
    }
    table_->verticalHeader()->setDefaultSectionSize(table_->fontMetrics().height() + kRowPadding);
    table_->resizeColumnToContents(0);
    table_->setColumnWidth(0, table_->columnWidth(0) + kColumnPadding);
    table_->horizontalHeader()->setSectionResizeMode(1, QHeaderView::Stretch);
}

}  // namespace nordkeep
