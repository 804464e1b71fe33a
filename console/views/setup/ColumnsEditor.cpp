#include "console/views/setup/FieldEditors.h"
#include "platform/qt/QtText.h"
#include "store/AlarmText.h"

#include <QtCore/QSignalBlocker>
#include <QtCore/QTimer>
#include <QtWidgets/QBoxLayout>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QTableWidget>

#include <algorithm>

namespace nordkeep {
namespace {

constexpr int kCaptionUp = 3895;
constexpr int kCaptionDown = 3896;
constexpr int kListRows = 9;        // in sight
constexpr int kPreviewHeight = 32;  // px

/// All columns in their order, those with a mark are shown; below it the list's head as it will be, whose
/// columns can be dragged too.
class ColumnsEditor final : public FieldEditor {
 public:
    explicit ColumnsEditor(const Captions& captions) : captions_(captions) {
        list_->setDragDropMode(QAbstractItemView::InternalMove);
        list_->setFixedHeight(list_->fontMetrics().height() * kListRows * 4 / 3);
        up_ = NewButton(captions, kCaptionUp);
        down_ = NewButton(captions, kCaptionDown);
        auto* buttons = new QVBoxLayout;
        buttons->addWidget(up_);
        buttons->addWidget(down_);
        buttons->addStretch(1);
        auto* top = new QHBoxLayout;
        top->addWidget(list_, 1);
        top->addLayout(buttons);
        auto* layout = new QVBoxLayout(this);
        layout->setContentsMargins(0, 0, 0, 0);
        layout->addLayout(top);
        layout->addWidget(preview_);
        preview_->horizontalHeader()->setSectionsMovable(true);
        preview_->verticalHeader()->hide();
        preview_->setFixedHeight(preview_->horizontalHeader()->sizeHint().height() + kPreviewHeight);
        preview_->setFocusPolicy(Qt::NoFocus);
        Connect();
    }
    void ShowValue(const Text& value) override {
        const QSignalBlocker silence(list_);
        const std::vector<int> shown = ParseColumns(value);
        list_->clear();
        for (const int number : shown) AddColumn(number, true);
        for (int number = 0; number < kAlarmFieldCount; ++number) {
            if (std::ranges::find(shown, number) == shown.end()) AddColumn(number, false);
        }
        list_->setCurrentRow(0);
        ShowPreview();
    }
    QWidget* Input() override { return list_; }

 private:
    void Connect() {
        connect(list_, &QListWidget::itemChanged, this, [this] { Tell(); });
        connect(list_->model(), &QAbstractItemModel::rowsMoved, this, [this] { Tell(); });
        connect(up_, &QPushButton::clicked, this, [this] { Move(-1); });
        connect(down_, &QPushButton::clicked, this, [this] { Move(1); });
        connect(preview_->horizontalHeader(), &QHeaderView::sectionMoved, this, [this] {
            // The head is made anew from the value, which cannot be done while it is being moved.
            QTimer::singleShot(0, this, [this] { TakeFromPreview(); });
        });
    }
    QString HeadingOf(int number) const { return ShownLine(captions_.FromFile(AlarmFieldHeading(number))); }
    void AddColumn(int number, bool isShown) {
        const QString name = ToQString(AlarmFieldName(number));
        auto* item =
            new QListWidgetItem(HeadingOf(number) + QStringLiteral(" (") + name + QStringLiteral(")"));
        item->setData(Qt::UserRole, number);
        item->setFlags((item->flags() | Qt::ItemIsUserCheckable) & ~Qt::ItemIsDropEnabled);
        item->setCheckState(isShown ? Qt::Checked : Qt::Unchecked);
        list_->addItem(item);
    }
    void Move(int by) {
        const int from = list_->currentRow();
        if (from < 0 || from + by < 0 || from + by >= list_->count()) return;
        {
            const QSignalBlocker silence(list_);
            list_->insertItem(from + by, list_->takeItem(from));
            list_->setCurrentRow(from + by);
        }
        Tell();
    }
    std::vector<int> Checked() const {
        std::vector<int> numbers;
        for (int row = 0; row < list_->count(); ++row) {
            const QListWidgetItem* item = list_->item(row);
            if (item->checkState() == Qt::Checked) numbers.push_back(item->data(Qt::UserRole).toInt());
        }
        return numbers;
    }
    static Text NamesOf(const std::vector<int>& numbers) {
        Text names;
        for (const int number : numbers)
            names.append(names.empty() ? "" : ",").append(AlarmFieldName(number));
        return names;
    }
    void Tell() {
        ShowPreview();
        onEdit(NamesOf(Checked()));
    }
    void TakeFromPreview() {
        const std::vector<int> shown = Checked();
        std::vector<int> moved;
        for (int place = 0; place < preview_->columnCount(); ++place) {
            const int column = preview_->horizontalHeader()->logicalIndex(place);
            moved.push_back(shown[static_cast<std::size_t>(column)]);
        }
        ShowValue(NamesOf(moved));
        Tell();
    }
    void ShowPreview() {
        const std::vector<int> shown = Checked();
        const QSignalBlocker silence(preview_->horizontalHeader());
        preview_->setColumnCount(0);
        preview_->setColumnCount(static_cast<int>(shown.size()));
        QStringList headings;
        for (const int number : shown) headings << HeadingOf(number);
        preview_->setHorizontalHeaderLabels(headings);
        preview_->resizeColumnsToContents();
    }

    const Captions& captions_;
    QListWidget* list_ = new QListWidget;
    QTableWidget* preview_ = new QTableWidget;
    QPushButton* up_ = nullptr;
    QPushButton* down_ = nullptr;
};

}  // namespace

FieldEditor* NewColumnsEditor(const Captions& captions) {
    return new ColumnsEditor(captions);
}

}  // namespace nordkeep
