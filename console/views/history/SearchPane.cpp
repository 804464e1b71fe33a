#include "console/views/history/SearchPane.h"

#include "console/views/lists/ListPane.h"
#include "console/views/lists/ViewParts.h"
#include "platform/qt/QtText.h"

#include <QtWidgets/QBoxLayout>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QGridLayout>
#include <QtWidgets/QLineEdit>

namespace nordkeep {
namespace {

constexpr int kCaptionFirstField = 5485;
constexpr int kCaptionFirstWhat = 5492;
constexpr int kCaptionWhat = 5503;
constexpr int kWhatCount = 3;
constexpr int kCaptionSearch = 5495;
constexpr int kCaptionMore = 5496;
constexpr int kCaptionAll = 5497;
constexpr int kCaptionStop = 5498;
constexpr int kCaptionSave = 5499;
constexpr int kCaptionPrint = 5500;
constexpr int kCaptionCase = 5501;
constexpr int kCaptionList = 5592;
constexpr int kLongestField = 200;

}  // namespace

SearchPane::SearchPane(HistoryBox& history, QWidget* parent)
    : QWidget(parent), history_(history), rows_(history.Rows()) {
    list_ = new ListPane(rows_);
    list_->setAccessibleName(CaptionText(history_.Words(), kCaptionList));
    list_->setColumnHidden(0, true);
    list_->StretchLastColumn();
    list_->setSelectionMode(QAbstractItemView::SingleSelection);
    list_->onSelection = [this] { Refresh(); };
    list_->onActivate = [this] { history_.OpenCase(list_->CurrentKey()); };
    trouble_ = new NoticeBar;
    notice_ = NewLabel();
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(NewFields());
    layout->addWidget(list_, 1);
    layout->addWidget(trouble_);
    layout->addWidget(NewButtons());
    Fill();
    Refresh();
}

QLineEdit* SearchPane::NewField(int caption, QGridLayout& grid, int row, int column) {
    auto* field = new QLineEdit;
    field->setMaxLength(kLongestField);
    field->setClearButtonEnabled(true);
    grid.addWidget(NewHeading(CaptionText(history_.Words(), caption), field), row, column);
    grid.addWidget(field, row, column + 1);
    connect(field, &QLineEdit::returnPressed, this, [this] { Search(); });
    return field;
}

QWidget* SearchPane::NewFields() {
    auto* part = new QWidget;
    auto* grid = new QGridLayout(part);
    grid->setContentsMargins(0, 0, 0, 0);
    struct Place {
        QLineEdit** field;
        int row;
        int column;
    };
    const Place places[] = {{&from_, 0, 0},     {&to_, 1, 0},   {&object_, 0, 2}, {&type_, 1, 2},
                            {&priority_, 0, 4}, {&doer_, 1, 4}, {&text_, 0, 6}};
    int caption = kCaptionFirstField;
    for (const Place& place : places) *place.field = NewField(caption++, *grid, place.row, place.column);
    what_ = new QComboBox;
    for (int i = 0; i < kWhatCount; ++i) what_->addItem(CaptionText(history_.Words(), kCaptionFirstWhat + i));
    what_->setAccessibleName(CaptionText(history_.Words(), kCaptionWhat));
    search_ = NewButton(history_.Words(), kCaptionSearch);
    search_->setDefault(true);
    auto* last = new QHBoxLayout;
    last->addWidget(what_, 1);
    last->addWidget(search_);
    grid->addLayout(last, 1, 6, 1, 2);
    for (const int column : {1, 3, 5, 7}) grid->setColumnStretch(column, column == 5 ? 1 : 2);
    connect(search_, &QPushButton::clicked, this, [this] { Search(); });
    return part;
}

QWidget* SearchPane::NewButtons() {
    const Captions& words = history_.Words();
    auto* part = new QWidget;
    auto* layout = new QHBoxLayout(part);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(notice_, 1);
    const auto add = [&](QPushButton*& button, int caption, auto act) {
        button = NewButton(words, caption);
        button->setAutoDefault(false);
        layout->addWidget(button);
        connect(button, &QPushButton::clicked, this, act);
    };
    add(more_, kCaptionMore, [this] { history_.More(); });
    add(all_, kCaptionAll, [this] { history_.FetchAll(); });
    add(stop_, kCaptionStop, [this] { history_.Stop(); });
    add(case_, kCaptionCase, [this] { history_.OpenCase(list_->CurrentKey()); });
    add(save_, kCaptionSave, [this] { AskExport(); });
    add(print_, kCaptionPrint, [this] { history_.Print(); });
    return part;
}

void SearchPane::Fill() {
    const HistoryBox::Fields& fields = history_.Wanted();
    from_->setText(ShownLine(fields.from));
    to_->setText(ShownLine(fields.to));
    object_->setText(ShownLine(fields.object));
    type_->setText(ShownLine(fields.type));
    priority_->setText(ShownLine(fields.priority));
    doer_->setText(ShownLine(fields.doer));
    text_->setText(ShownLine(fields.text));
    what_->setCurrentIndex(static_cast<int>(fields.what));
}

void SearchPane::Search() {
    history_.Search({.from = FromQString(from_->text()),
                     .to = FromQString(to_->text()),
                     .what = static_cast<HistoryQuery::What>(what_->currentIndex()),
                     .object = FromQString(object_->text()),
                     .type = FromQString(type_->text()),
                     .priority = FromQString(priority_->text()),
                     .doer = FromQString(doer_->text()),
                     .text = FromQString(text_->text())});
}

void SearchPane::Refresh() {
    const QString notice = ShownText(history_.Notice());
    trouble_->SetNotice(history_.IsTrouble() ? notice : QString());
    notice_->setText(history_.IsTrouble() ? QString() : notice);
    const bool isBusy = history_.IsBusy();
    const bool hasRows = !history_.Rows().Entries().empty();
    more_->setEnabled(!isBusy && history_.HasMore());
    all_->setEnabled(!isBusy && history_.HasMore());
    stop_->setEnabled(isBusy);
    const HistoryEntry* entry = history_.Rows().EntryOf(list_->CurrentKey());
    case_->setEnabled(entry && !entry->event.empty());
    save_->setEnabled(hasRows);
    print_->setEnabled(hasRows);
}

void SearchPane::AskExport() {
    auto* dialog = new QFileDialog(this, window()->windowTitle(), {}, QStringLiteral("CSV (*.csv)"));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setDefaultSuffix(QStringLiteral("csv"));
    connect(dialog, &QFileDialog::fileSelected, this,
            [this](const QString& file) { history_.ExportTo(file.toStdString()); });
    dialog->open();
}

}  // namespace nordkeep
