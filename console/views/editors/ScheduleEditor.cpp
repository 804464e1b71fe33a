#include "console/editors/ScheduleForm.h"
#include "console/views/editors/RowEditors.h"
#include "platform/qt/QtText.h"

#include <QtCore/QSignalBlocker>
#include <QtWidgets/QBoxLayout>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QTableWidget>

namespace nordkeep {
namespace {

constexpr int kFirstKind = 4800;  // of the kinds, in their order
constexpr int kCaptionMinutes = 4803;
constexpr int kCaptionFrom = 4804;
constexpr int kCaptionUntil = 4805;
constexpr int kMostRows = 6;
constexpr int kColumnWidth = 110;  // px
constexpr int kNumberLetters = 10;

using Kind = ScheduleForm::Kind;

/// Never, every so many minutes, or times of day in a small table that always has a row to spare.
class ScheduleEditor final : public FieldEditor {
 public:
    explicit ScheduleEditor(const EditorNeeds& needs) : captions_(needs.captions) {
        for (int kind = 0; kind < 3; ++kind) kind_->addItem(CaptionText(captions_, kFirstKind + kind));
        minutes_->setMaximumWidth(minutes_->fontMetrics().averageCharWidth() * kNumberLetters);
        minutes_->setAccessibleName(CaptionText(captions_, kCaptionMinutes));
        MakeTable();
        auto* line = new QHBoxLayout;
        line->addWidget(kind_);
        line->addWidget(minutes_);
        line->addWidget(unit_ = NewLabel(CaptionText(captions_, kCaptionMinutes)));
        line->addStretch(1);
        auto* layout = new QVBoxLayout(this);
        layout->setContentsMargins(0, 0, 0, 0);
        layout->addLayout(line);
        layout->addWidget(times_);
        connect(kind_, &QComboBox::activated, this, [this](int kind) { Choose(static_cast<Kind>(kind)); });
        connect(minutes_, &QLineEdit::textEdited, this, [this](const QString& text) {
            form_.minutes = FromQString(text);
            Tell();
        });
        connect(times_, &QTableWidget::cellChanged, this, [this] { TakeTimes(); });
    }
    void ShowValue(const Text& value) override {
        // What was typed last may be told in another order, or not at all yet.
        if (value == told_) return;
        told_ = value;
        form_ = FormOfSchedule(value);
        Show();
    }
    QWidget* Input() override { return kind_; }

 private:
    void MakeTable() {
        times_->setHorizontalHeaderLabels(
            {CaptionText(captions_, kCaptionFrom), CaptionText(captions_, kCaptionUntil)});
        times_->setAccessibleName(CaptionText(captions_, kFirstKind + static_cast<int>(Kind::Times)));
        times_->verticalHeader()->hide();
        times_->setTabKeyNavigation(false);
        times_->setEditTriggers(QAbstractItemView::AllEditTriggers);
        for (int column = 0; column < 2; ++column) times_->setColumnWidth(column, kColumnWidth);
        times_->setMaximumWidth(2 * kColumnWidth + 30);
        times_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    }
    void Choose(Kind kind) {
        form_.kind = kind;
        Show();
        Tell();
        if (kind == Kind::Minutes) minutes_->setFocus();
        if (kind == Kind::Times) times_->setFocus();
    }
    void Tell() {
        told_ = ScheduleOf(form_);
        onEdit(told_);
    }
    void TakeTimes() {
        form_.times.clear();
        const auto cell = [this](int row, int column) {
            const QTableWidgetItem* item = times_->item(row, column);
            return item ? FromQString(item->text()) : Text();
        };
        for (int row = 0; row < times_->rowCount(); ++row) {
            if (!cell(row, 0).empty() || !cell(row, 1).empty())
                form_.times.push_back({cell(row, 0), cell(row, 1)});
        }
        Tell();
        // The cell that is being left is to stay what it is until then.
        QMetaObject::invokeMethod(
            this, [this] { ShowTimes(); }, Qt::QueuedConnection);
    }
    void Show() {
        kind_->setCurrentIndex(static_cast<int>(form_.kind));
        const QString minutes = ToQString(form_.minutes);
        if (minutes_->text() != minutes) minutes_->setText(minutes);
        minutes_->setVisible(form_.kind == Kind::Minutes);
        unit_->setVisible(form_.kind == Kind::Minutes);
        times_->setVisible(form_.kind == Kind::Times);
        ShowTimes();
    }
    void ShowTimes() {
        const QSignalBlocker silence(times_);
        const int rows = static_cast<int>(form_.times.size()) + 1;
        times_->setRowCount(rows);
        for (int row = 0; row < rows; ++row) {
            const bool isSpare = row + 1 == rows;
            const auto window = isSpare ? ScheduleForm::Window() : form_.times[static_cast<std::size_t>(row)];
            SetCell(row, 0, window.begin);
            SetCell(row, 1, window.end);
        }
        const int shown = qMin(rows, kMostRows);
        times_->setFixedHeight(times_->horizontalHeader()->sizeHint().height() +
                               shown * times_->verticalHeader()->defaultSectionSize() + 4);
    }
    void SetCell(int row, int column, const Text& text) {
        if (!times_->item(row, column)) times_->setItem(row, column, new QTableWidgetItem);
        times_->item(row, column)->setText(ToQString(text));
    }

    const Captions& captions_;
    QComboBox* kind_ = new CalmBox;
    QLineEdit* minutes_ = new QLineEdit;
    QLabel* unit_ = nullptr;
    QTableWidget* times_ = new QTableWidget(0, 2);
    ScheduleForm form_{};
    Text told_{"\n"};  // no schedule at all
};

}  // namespace

FieldEditor* NewScheduleEditor(const EditorNeeds& needs) {
    return new ScheduleEditor(needs);
}

}  // namespace nordkeep
