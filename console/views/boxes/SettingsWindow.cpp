#include "console/views/boxes/SettingsWindow.h"

#include "console/lists/SharedCaptions.h"

#include <QtWidgets/QBoxLayout>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QTableWidget>

namespace nordkeep {
namespace {

constexpr int kCaptionTitle = 3730;
constexpr int kCaptionSection = 3731;
constexpr int kCaptionKey = 3732;
constexpr int kCaptionValue = 3733;
constexpr int kCaptionScope = 3734;
constexpr int kCaptionWorkstation = 3735;
constexpr int kCaptionCentre = 3736;
constexpr int kCaptionPath = 3737;
constexpr int kCaptionSearch = 3738;
constexpr int kCaptionOnlyChanged = 3739;
constexpr int kColumns[] = {kCaptionSection, kCaptionKey, kCaptionValue, kCaptionScope};
constexpr int kRowPadding = 8;      // px
constexpr int kColumnPadding = 12;  // px
constexpr int kChangedRole = Qt::UserRole;

}  // namespace

SettingsWindow::SettingsWindow(const SettingsList& settings, const Captions& captions, QWidget* parent)
    : QDialog(parent) {
    setModal(false);
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    setWindowTitle(PlainCaption(captions, kCaptionTitle));
    search_ = new QLineEdit;
    search_->setPlaceholderText(CaptionText(captions, kCaptionSearch));
    search_->setClearButtonEnabled(true);
    onlyChanged_ = new QCheckBox(CaptionText(captions, kCaptionOnlyChanged));
    auto* top = new QHBoxLayout;
    top->addWidget(search_, 1);
    top->addWidget(onlyChanged_);
    table_ = new QTableWidget(0, static_cast<int>(std::size(kColumns)));
    Fill(settings, captions);
    QLabel* path = NewDataLabel(ShownLine(captions(kCaptionPath, {settings.Path()})));
    auto* close = NewButton(captions, kCaptionClose);
    auto* bottom = new QHBoxLayout;
    bottom->addWidget(path, 1);
    bottom->addWidget(close);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(top);
    layout->addWidget(table_, 1);
    layout->addLayout(bottom);
    connect(search_, &QLineEdit::textChanged, this, [this] { Filter(); });
    connect(onlyChanged_, &QCheckBox::toggled, this, [this] { Filter(); });
    connect(close, &QPushButton::clicked, this, &QDialog::close);
    resize(820, 600);
}

void SettingsWindow::Fill(const SettingsList& settings, const Captions& captions) {
    QStringList headings;
    for (const int number : kColumns) headings << CaptionText(captions, number);
    table_->setHorizontalHeaderLabels(headings);
    table_->verticalHeader()->hide();
    table_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table_->setSelectionBehavior(QAbstractItemView::SelectRows);
    table_->setAlternatingRowColors(true);
    table_->setShowGrid(false);
    table_->setTabKeyNavigation(false);
    table_->setRowCount(static_cast<int>(settings.Rows().size()));
    for (int row = 0; row < table_->rowCount(); ++row) {
        const SettingInForce& setting = settings.Rows()[static_cast<std::size_t>(row)];
        const int scope = setting.scope == SettingScope::Centre ? kCaptionCentre : kCaptionWorkstation;
        const QString cells[] = {ShownLine(setting.section), ShownLine(setting.key), ShownLine(setting.value),
                                 CaptionText(captions, scope)};
        for (int column = 0; column < table_->columnCount(); ++column) {
            auto* item = new QTableWidgetItem(cells[column]);
            item->setData(kChangedRole, setting.isChanged);
            QFont font = item->font();
            font.setBold(setting.isChanged);
            item->setFont(font);
            table_->setItem(row, column, item);
        }
    }
    table_->verticalHeader()->setDefaultSectionSize(table_->fontMetrics().height() + kRowPadding);
    table_->setWordWrap(false);
    table_->resizeColumnsToContents();
    for (const int column : {0, 1, 3})
        table_->setColumnWidth(column, table_->columnWidth(column) + kColumnPadding);
    table_->horizontalHeader()->setSectionResizeMode(2, QHeaderView::Stretch);
}

void SettingsWindow::Filter() {
    for (int row = 0; row < table_->rowCount(); ++row) {
        bool fits = search_->text().isEmpty();
        for (int column = 0; column < table_->columnCount(); ++column) {
            fits = fits || table_->item(row, column)->text().contains(search_->text(), Qt::CaseInsensitive);
        }
        const bool isChanged = table_->item(row, 0)->data(kChangedRole).toBool();
        table_->setRowHidden(row, !fits || (onlyChanged_->isChecked() && !isChanged));
    }
}

}  // namespace nordkeep
