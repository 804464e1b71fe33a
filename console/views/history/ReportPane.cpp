#include "console/views/history/ReportPane.h"

#include "console/views/history/ChartPane.h"
#include "console/views/lists/Theme.h"
#include "console/views/lists/ViewParts.h"

#include <QtWidgets/QBoxLayout>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QTreeWidget>

namespace nordkeep {
namespace {

constexpr int kCaptionMake = 5545;
constexpr int kCaptionSave = 5499;
constexpr int kCaptionPrint = 5500;
constexpr int kCaptionTables = 5593;
constexpr int kCaptionReport = 5484;
constexpr int kColumnPadding = 16;
constexpr qsizetype kFewColumns = 3;

/// Names of objects are long: a table of few columns does not set the widths of those with many.
QTreeWidgetItem* NewRow(QTreeWidgetItem& heading, const std::vector<Text>& row) {
    QStringList cells;
    for (const Text& cell : row) cells << ShownLine(cell);
    const bool isNarrow = cells.size() <= kFewColumns;
    auto* item =
        new QTreeWidgetItem(&heading, isNarrow ? QStringList(cells.join(QStringLiteral("   "))) : cells);
    if (isNarrow) item->setFirstColumnSpanned(true);
    return item;
}

}  // namespace

ReportPane::ReportPane(ReportBox& report, const Captions& captions, QWidget* parent)
    : QWidget(parent), report_(report), captions_(captions) {
    auto* charts = new QHBoxLayout;
    for (ChartPane*& chart : charts_)
        charts->addWidget(chart = new ChartPane, &chart == charts_.data() ? 2 : 1);
    tables_ = new QTreeWidget;
    tables_->setHeaderHidden(true);
    tables_->setRootIsDecorated(true);
    tables_->setAccessibleName(CaptionText(captions_, kCaptionTables));
    trouble_ = new NoticeBar;
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(NewTop());
    layout->addLayout(charts, 2);
    layout->addWidget(tables_, 3);
    layout->addWidget(trouble_);
    Refresh();
}

QWidget* ReportPane::NewTop() {
    auto* part = new QWidget;
    auto* layout = new QHBoxLayout(part);
    layout->setContentsMargins(0, 0, 0, 0);
    usual_ = new QComboBox;
    usual_->setAccessibleName(CaptionText(captions_, kCaptionReport));
    for (int i = 0; i < ReportBox::kUsualCount; ++i)
        usual_->addItem(ShownLine(report_.CaptionOf(static_cast<ReportBox::Usual>(i))));
    make_ = NewButton(captions_, kCaptionMake);
    make_->setAutoDefault(true);
    notice_ = NewLabel();
    save_ = NewButton(captions_, kCaptionSave);
    print_ = NewButton(captions_, kCaptionPrint);
    save_->setAutoDefault(false);
    print_->setAutoDefault(false);
    layout->addWidget(usual_);
    layout->addWidget(make_);
    layout->addWidget(notice_, 1);
    layout->addWidget(save_);
    layout->addWidget(print_);
    connect(make_, &QPushButton::clicked, this,
            [this] { report_.Make(report_.SpanOf(static_cast<ReportBox::Usual>(usual_->currentIndex()))); });
    connect(save_, &QPushButton::clicked, this, [this] { AskExport(); });
    connect(print_, &QPushButton::clicked, this, [this] { report_.Print(); });
    return part;
}

void ReportPane::Refresh() {
    const QString notice = ShownText(report_.Notice());
    trouble_->SetNotice(report_.IsTrouble() ? notice : QString());
    notice_->setText(report_.IsTrouble() ? QString() : notice);
    make_->setEnabled(!report_.IsBusy());
    save_->setEnabled(report_.HasFigures());
    print_->setEnabled(report_.HasFigures());
    for (ChartPane* chart : charts_) chart->setVisible(report_.HasFigures());
    tables_->setVisible(report_.HasFigures());
    if (!report_.HasFigures() || shown_ == report_.Figures()) return;
    shown_ = report_.Figures();
    const std::vector<Chart> charts = report_.Charts();
    for (std::size_t i = 0; i < charts_.size() && i < charts.size(); ++i) charts_[i]->Show(charts[i]);
    FillTables();
}

void ReportPane::FillTables() {
    tables_->clear();
    std::size_t columns = 1;
    for (const ReportTable& table : report_.Tables()) columns = std::max(columns, table.columns.size());
    tables_->setColumnCount(static_cast<int>(columns));
    for (const ReportTable& table : report_.Tables()) {
        const QString count =
            table.columns.empty() ? QString() : QStringLiteral(" (%1)").arg(table.rows.size());
        auto* heading = new QTreeWidgetItem(tables_, {ShownLine(table.heading) + count});
        QFont bold = heading->font(0);
        bold.setBold(true);
        heading->setFont(0, bold);
        heading->setFirstColumnSpanned(true);
        if (!table.columns.empty() && !table.rows.empty()) {
            QTreeWidgetItem* names = NewRow(*heading, table.columns);
            for (int column = 0; column < tables_->columnCount(); ++column)
                names->setForeground(column, MutedColor(palette()));
        }
        for (const auto& row : table.rows) NewRow(*heading, row);
        heading->setExpanded(!table.rows.empty());
    }
    for (int column = 0; column < tables_->columnCount(); ++column) {
        tables_->resizeColumnToContents(column);
        tables_->setColumnWidth(column, tables_->columnWidth(column) + kColumnPadding);
    }
}

void ReportPane::AskExport() {
    auto* dialog = new QFileDialog(this, window()->windowTitle(), {}, QStringLiteral("CSV (*.csv)"));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setDefaultSuffix(QStringLiteral("csv"));
    connect(dialog, &QFileDialog::fileSelected, this,
            [this](const QString& file) { report_.ExportTo(file.toStdString()); });
    dialog->open();
}

}  // namespace nordkeep
