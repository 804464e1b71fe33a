#include "console/views/setup/LinesPane.h"

#include <QtCore/QSignalBlocker>
#include <QtCore/QTimer>
#include <QtWidgets/QBoxLayout>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QStyledItemDelegate>
#include <QtWidgets/QTableWidget>

namespace nordkeep {
namespace {

constexpr int kHeadings[] = {4541, 4542, 4543, 4565, 4566, 4567};
constexpr int kCaptionLines = 4540;
constexpr int kCaptionNew = 4568;
constexpr int kCaptionCopy = 4569;
constexpr int kCaptionRemove = 4570;
constexpr int kCaptionClose = 4571;
constexpr int kCaptionOpen = 4572;
constexpr int kCaptionTest = 4573;
constexpr int kCaptionNoLine = 4574;
constexpr int kCaptionMute = 5191;
constexpr int kCaptionUnmute = 5192;
constexpr int kCaptionGoBack = 5193;
constexpr int kCaptionGoOn = 5194;
constexpr int kTickMs = 1000;
constexpr int kTableHeight = 190;  // px
constexpr int kRowPadding = 8;     // px

/// Columns that fit their texts to the letter would read as one.
class SpacedCells final : public QStyledItemDelegate {
 public:
    using QStyledItemDelegate::QStyledItemDelegate;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
        return QStyledItemDelegate::sizeHint(option, index) + QSize(kColumnGap, 0);
    }

 private:
    static constexpr int kColumnGap = 12;  // px
};

QTableWidget* NewTable(const Captions& captions) {
    auto* table = new QTableWidget(0, static_cast<int>(std::size(kHeadings)));
    QStringList headings;
    for (const int number : kHeadings) headings << CaptionText(captions, number);
    table->setHorizontalHeaderLabels(headings);
    table->setAccessibleName(CaptionText(captions, kCaptionLines));
    table->verticalHeader()->hide();
    table->verticalHeader()->setDefaultSectionSize(table->fontMetrics().height() + kRowPadding);
    table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table->setSelectionBehavior(QAbstractItemView::SelectRows);
    table->setSelectionMode(QAbstractItemView::SingleSelection);
    table->setShowGrid(false);
    table->setTabKeyNavigation(false);
    table->setWordWrap(false);
    table->setFixedHeight(kTableHeight);
    table->setItemDelegate(new SpacedCells(table));
    table->horizontalHeader()->setHighlightSections(false);
    table->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    table->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    table->horizontalHeader()->setSectionResizeMode(1, QHeaderView::Stretch);
    return table;
}

}  // namespace

LinesPane::LinesPane(LinesBox& lines, const Captions& captions) : lines_(lines), captions_(captions) {
    table_ = NewTable(captions);
    empty_ = NewDataLabel(CaptionText(captions, kCaptionNoLine));
    fields_ = new FieldPane(lines, captions);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(table_);
    layout->addWidget(empty_);
    layout->addWidget(NewButtons());
    layout->addWidget(NewSteps());
    layout->addWidget(fields_, 1);
    timer_ = new QTimer(this);
    timer_->setInterval(kTickMs);
    connect(timer_, &QTimer::timeout, this, [this] {
        lines_.Tick();
        ShowRows();
        ShowButtons();
    });
    connect(table_, &QTableWidget::currentCellChanged, this, [this](int row) {
        if (row >= 0) lines_.Select(static_cast<std::size_t>(row));
    });
    connect(table_, &QTableWidget::cellActivated, this, [this] { fields_->FocusFirst(); });
}

void LinesPane::FollowInTabs(QWidget* widget) {
    QWidget* last = widget;
    for (QWidget* next :
         {static_cast<QWidget*>(table_), static_cast<QWidget*>(new_), static_cast<QWidget*>(copy_),
          static_cast<QWidget*>(remove_), static_cast<QWidget*>(hold_), static_cast<QWidget*>(mute_),
          static_cast<QWidget*>(test_), static_cast<QWidget*>(back_), static_cast<QWidget*>(on_)}) {
        setTabOrder(last, next);
        last = next;
    }
    fields_->FollowInTabs(last);
}

QWidget* LinesPane::NewButtons() {
    auto* frame = new QWidget;
    auto* layout = new QHBoxLayout(frame);
    layout->setContentsMargins(0, 0, 0, 0);
    new_ = NewButton(captions_, kCaptionNew);
    copy_ = NewButton(captions_, kCaptionCopy);
    remove_ = NewButton(captions_, kCaptionRemove);
    hold_ = NewButton(captions_, kCaptionClose);
    test_ = NewButton(captions_, kCaptionTest);
    mute_ = NewButton(captions_, kCaptionMute);
    for (QPushButton* button : {new_, copy_, remove_, hold_, mute_, test_}) layout->addWidget(button);
    layout->addStretch(1);
    connect(new_, &QPushButton::clicked, this, [this] {
        lines_.New();
        fields_->FocusFirst();
    });
    connect(copy_, &QPushButton::clicked, this, [this] {
        lines_.Copy();
        fields_->FocusFirst();
    });
    connect(remove_, &QPushButton::clicked, this, [this] { lines_.Remove(); });
    connect(hold_, &QPushButton::clicked, this, [this] { lines_.ToggleHeld(); });
    connect(mute_, &QPushButton::clicked, this, [this] { lines_.ToggleMuted(); });
    connect(test_, &QPushButton::clicked, this, [this] { lines_.SendTest(); });
    return frame;
}

/// The steps of a new line.
QWidget* LinesPane::NewSteps() {
    steps_ = new QWidget;
    step_ = NewHeading(QString());
    back_ = NewButton(captions_, kCaptionGoBack);
    on_ = NewButton(captions_, kCaptionGoOn);
    auto* layout = new QHBoxLayout(steps_);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(step_, 1);
    layout->addWidget(back_);
    layout->addWidget(on_);
    connect(back_, &QPushButton::clicked, this, [this] {
        lines_.GoBack();
        fields_->FocusFirst();
    });
    connect(on_, &QPushButton::clicked, this, [this] {
        lines_.GoOn();
        fields_->FocusFirst();
    });
    return steps_;
}

void LinesPane::Refresh() {
    ShowRows();
    fields_->Refresh();
    ShowButtons();
    onChange();
}

void LinesPane::ShowButtons() {
    const auto current = lines_.Current();
    const bool mayEdit = lines_.MayEdit();
    new_->setEnabled(mayEdit && !lines_.IsNew());
    copy_->setEnabled(mayEdit && current);
    remove_->setEnabled(mayEdit && current);
    const bool isRunning = current && lines_.Rows()[*current].isRunning;
    hold_->setEnabled(mayEdit && isRunning);
    hold_->setText(CaptionText(captions_, lines_.IsHeld() ? kCaptionOpen : kCaptionClose));
    mute_->setEnabled(mayEdit && isRunning);
    mute_->setText(CaptionText(captions_, lines_.IsMuted() ? kCaptionUnmute : kCaptionMute));
    test_->setEnabled(isRunning);
    steps_->setVisible(lines_.Step().has_value());
    step_->setText(ShownLine(lines_.StepText()));
    back_->setEnabled(lines_.MayGoBack());
    on_->setEnabled(lines_.MayGoOn());
}

void LinesPane::ShowRows() {
    const QSignalBlocker silence(table_);
    const auto& rows = lines_.Rows();
    empty_->setVisible(rows.empty());
    table_->setRowCount(static_cast<int>(rows.size()));
    for (int number = 0; number < table_->rowCount(); ++number) {
        const LineRow& row = rows[static_cast<std::size_t>(number)];
        const LineFigures& figures = row.figures;
        const Text cells[] = {row.description,
                              row.kind,
                              lines_.StateText(row),
                              row.isRunning ? lines_.TimeText(figures.lastTraffic) : Text(),
                              row.isRunning ? std::to_string(figures.telegramsToday) : Text(),
                              row.isRunning ? std::to_string(figures.refusedToday) : Text()};
        for (int column = 0; column < table_->columnCount(); ++column) {
            QTableWidgetItem* item = table_->item(number, column);
            if (!item) table_->setItem(number, column, item = new QTableWidgetItem);
            const QString text = ShownLine(cells[column]);
            if (item->text() != text) item->setText(text);
        }
    }
    const auto current = lines_.Current();
    if (current)
        table_->setCurrentCell(static_cast<int>(*current),
                               table_->currentColumn() < 0 ? 0 : table_->currentColumn());
    else
        table_->setCurrentCell(-1, -1);
}

void LinesPane::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    timer_->start();
}

void LinesPane::hideEvent(QHideEvent* event) {
    QWidget::hideEvent(event);
    timer_->stop();
}

}  // namespace nordkeep
