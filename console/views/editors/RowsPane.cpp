#include "console/views/editors/RowsPane.h"

#include "console/views/editors/RowEditors.h"
#include "platform/qt/QtText.h"

#include <QtCore/QSignalBlocker>
#include <QtCore/QTimer>
#include <QtGui/QShortcut>
#include <QtWidgets/QBoxLayout>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMenu>
#include <QtWidgets/QScrollArea>
#include <QtWidgets/QSplitter>

namespace nordkeep {
namespace {

constexpr int kCaptionSearch = 4707;
constexpr int kCaptionAdd = 4708;
constexpr int kCaptionCopy = 4709;
constexpr int kCaptionRemove = 4710;
constexpr int kCaptionUndo = 4711;
constexpr int kCaptionAsText = 4712;
constexpr int kCaptionCount = 4713;
constexpr int kCaptionNoFile = 4714;
constexpr int kCaptionImport = 4715;
constexpr int kCaptionExport = 4716;
constexpr int kCaptionSample = 4918;
constexpr int kCaptionInformation = 5123;
constexpr int kCaptionCodeTexts = 5804;
constexpr int kCaptionNoTypes = 5805;
constexpr int kTickMs = 50;
constexpr int kFactsWidth = 260;  // px
constexpr int kTableHeight = 240;
constexpr int kFieldsHeight = 340;

/// What can be done with rows, and when.
struct RowButton {
    int caption;
    void (*run)(RowsBox& rows, const std::vector<Text>& selected);
    bool (*isOn)(const RowsBox& rows);
};
constexpr RowButton kButtons[] = {
    {kCaptionAdd, [](RowsBox& rows, const std::vector<Text>&) { rows.Add(); },
     [](const RowsBox& rows) { return rows.MayEdit(); }},
    {kCaptionCopy, [](RowsBox& rows, const std::vector<Text>&) { rows.Copy(); },
     [](const RowsBox& rows) { return rows.MayEdit() && !rows.Current().empty(); }},
    {kCaptionRemove, [](RowsBox& rows, const std::vector<Text>& selected) { rows.Remove(selected); },
     [](const RowsBox& rows) { return rows.MayEdit() && !rows.Current().empty(); }},
    {kCaptionUndo, [](RowsBox& rows, const std::vector<Text>&) { rows.Undo(); },
     [](const RowsBox& rows) { return rows.MayUndo(); }},
    {kCaptionAsText, [](RowsBox& rows, const std::vector<Text>&) { rows.EditAsText(); },
     [](const RowsBox& rows) { return rows.HasFile(); }},
    {kCaptionInformation, [](RowsBox& rows, const std::vector<Text>&) { rows.EditInformation(); },
     [](const RowsBox& rows) { return !rows.Current().empty(); }},
};

}  // namespace

RowsPane::RowsPane(RowsBox& rows, const Captions& captions) : rows_(rows), captions_(captions) {
    adapter_ = new RowAdapter(rows.Table(), this);
    table_ = new ListPane(*adapter_);
    table_->setAccessibleName(ShownLine(rows.Caption()));
    table_->StretchLastColumn();
    fields_ = new FieldPane(rows, captions, &NewRowEditor);
    auto* parts = new QSplitter(Qt::Vertical);
    parts->setChildrenCollapsible(false);
    parts->addWidget(table_);
    parts->addWidget(NewBottom());
    parts->setSizes({kTableHeight, kFieldsHeight});
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(NewTop());
    layout->addWidget(parts, 1);
    timer_ = new QTimer(this);
    timer_->setInterval(kTickMs);
    connect(timer_, &QTimer::timeout, this, [this] {
        if (rows_.Tick()) Refresh();
    });
    table_->onSelection = [this] { rows_.Select(table_->CurrentKey()); };
    table_->onActivate = [this] { fields_->FocusFirst(); };
    AddKeys();
}

QWidget* RowsPane::NewTop() {
    auto* top = new QWidget;
    auto* layout = new QHBoxLayout(top);
    layout->setContentsMargins(0, 0, 0, 0);
    files_ = new QComboBox;
    files_->setMinimumContentsLength(18);
    auto* label = NewLabel(CaptionText(captions_, rows_.OwnerCaption()));
    label->setBuddy(files_);
    label->setVisible(rows_.HasManyFiles());
    files_->setVisible(rows_.HasManyFiles());
    search_ = new QLineEdit;
    search_->setPlaceholderText(CaptionText(captions_, kCaptionSearch));
    search_->setAccessibleName(search_->placeholderText());
    search_->setClearButtonEnabled(true);
    count_ = NewLabel();
    layout->addWidget(label);
    layout->addWidget(files_);
    layout->addWidget(search_, 1);
    layout->addWidget(count_);
    connect(files_, &QComboBox::activated, this,
            [this](int number) { rows_.ChooseFile(static_cast<std::size_t>(number)); });
    connect(search_, &QLineEdit::textChanged, this,
            [this](const QString& words) { rows_.Search(FromQString(words)); });
    return top;
}

QWidget* RowsPane::NewButtons() {
    auto* frame = new QWidget;
    auto* layout = new QHBoxLayout(frame);
    layout->setContentsMargins(0, 0, 0, 0);
    for (const RowButton& button : kButtons) {
        buttons_.push_back(NewButton(captions_, button.caption));
        layout->addWidget(buttons_.back());
        if (button.caption == kCaptionInformation) buttons_.back()->setVisible(rows_.HasInformation());
        connect(buttons_.back(), &QPushButton::clicked, this, [this, &button] {
            button.run(rows_, table_->SelectedKeys());
            if (button.caption == kCaptionAdd || button.caption == kCaptionCopy) fields_->FocusFirst();
        });
    }
    layout->addStretch(1);
    import_ = NewButton(captions_, kCaptionImport);
    export_ = NewButton(captions_, kCaptionExport);
    for (QPushButton* button : {import_, export_}) {
        layout->addWidget(button);
        button->setVisible(rows_.HasCsv());
    }
    connect(import_, &QPushButton::clicked, this, [this] { AskImport(); });
    connect(export_, &QPushButton::clicked, this, [this] { AskExport(); });
    return frame;
}

QWidget* RowsPane::NewBottom() {
    auto* bottom = new QWidget;
    rowFault_ = NewDataLabel();
    auto* sides = new QHBoxLayout;
    sides->addWidget(fields_, 1);
    sides->addWidget(NewFacts());
    auto* layout = new QVBoxLayout(bottom);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(NewButtons());
    layout->addWidget(rowFault_);
    layout->addLayout(sides, 1);
    return bottom;
}

/// What is known of the row in front, and what would become of a telegram.
QWidget* RowsPane::NewFacts() {
    facts_ = NewDataLabel();
    facts_->setAlignment(Qt::AlignTop | Qt::AlignLeft);
    facts_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    auto* area = new QScrollArea;
    area->setWidgetResizable(true);
    area->setFrameShape(QFrame::NoFrame);
    area->setFocusPolicy(Qt::NoFocus);
    area->setWidget(facts_);
    sample_ = new QLineEdit;
    sample_->setPlaceholderText(PlainCaption(captions_, kCaptionSample));
    sample_->setAccessibleName(sample_->placeholderText());
    outcome_ = NewDataLabel();
    connect(sample_, &QLineEdit::textEdited, this, [this](const QString& telegram) {
        outcome_->setText(ShownText(rows_.Try(FromQString(telegram))));
    });
    beside_ = new QWidget;
    beside_->setFixedWidth(kFactsWidth);
    auto* layout = new QVBoxLayout(beside_);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(area, 1);
    layout->addWidget(NewCodeTexts());
    layout->addWidget(sample_);
    layout->addWidget(outcome_);
    return beside_;
}

/// What is to be done about the object for single types: a button with a list of them.
QWidget* RowsPane::NewCodeTexts() {
    codeTexts_ = NewButton(captions_, kCaptionCodeTexts);
    codeTexts_->setVisible(rows_.HasInformation());
    auto* menu = new QMenu(codeTexts_);
    codeTexts_->setMenu(menu);
    connect(menu, &QMenu::aboutToShow, this, [this, menu] {
        menu->clear();
        for (const CodeText& text : rows_.CodeTexts()) {
            connect(menu->addAction(WithoutMnemonics(ShownLine(text.caption))), &QAction::triggered, this,
                    [this, code = text.code] { rows_.EditCodeText(code); });
        }
        if (menu->isEmpty()) menu->addAction(CaptionText(captions_, kCaptionNoTypes))->setEnabled(false);
    });
    return codeTexts_;
}

void RowsPane::AddKeys() {
    const auto onKey = [this](QWidget* in, QKeySequence keys, auto&& run) {
        auto* shortcut = new QShortcut(keys, in);
        shortcut->setContext(Qt::WidgetWithChildrenShortcut);
        connect(shortcut, &QShortcut::activated, this, run);
    };
    onKey(table_, Qt::Key_Insert, [this] {
        rows_.Add();
        fields_->FocusFirst();
    });
    onKey(table_, Qt::Key_Delete, [this] { rows_.Remove(table_->SelectedKeys()); });
    // In a field the key takes back what is typed there.
    onKey(table_, Qt::CTRL | Qt::Key_Z, [this] { rows_.Undo(); });
    onKey(search_, Qt::Key_Down, [this] { table_->setFocus(); });
}

void RowsPane::FollowInTabs(QWidget* widget) {
    QWidget* last = widget;
    std::vector<QWidget*> order = {files_, search_, table_};
    order.insert(order.end(), buttons_.begin(), buttons_.end());
    order.insert(order.end(), {import_, export_, codeTexts_, sample_});
    for (QWidget* next : order) {
        setTabOrder(last, next);
        last = next;
    }
    fields_->FollowInTabs(last);
}

void RowsPane::Refresh() {
    ShowFiles();
    rows_.Table().Flush();
    const Text current = rows_.Current();
    if (table_->CurrentKey() != current) {
        table_->SelectKeys(current.empty() ? std::vector<Text>() : std::vector<Text>{current}, current);
        table_->Reveal(current);
    }
    fields_->setVisible(!current.empty());
    beside_->setVisible(!current.empty() && rows_.HasFacts());
    fields_->Refresh();
    QPalette colors = palette();
    colors.setColor(QPalette::WindowText, WarningColor(colors));
    rowFault_->setPalette(colors);
    const QString fault = ShownLine(rows_.RowFault());
    rowFault_->setText(fault.isEmpty() ? QString() : QStringLiteral("! ") + fault);
    rowFault_->setVisible(!fault.isEmpty());
    facts_->setText(ShownText(rows_.Facts()));
    ShowButtons();
    onChange();
}

void RowsPane::ShowFiles() {
    const QSignalBlocker silence(files_);
    const auto& names = rows_.Files();
    QStringList shown;
    for (const Text& name : names) shown << ShownLine(name);
    QStringList present;
    for (int number = 0; number < files_->count(); ++number) present << files_->itemText(number);
    if (shown != present) {
        files_->clear();
        files_->addItems(shown);
    }
    files_->setCurrentIndex(rows_.CurrentFile() ? static_cast<int>(*rows_.CurrentFile()) : -1);
    files_->setEnabled(!names.empty());
    const QSignalBlocker silentSearch(search_);
    if (TrimBlanks(FromQString(search_->text())) != rows_.SearchedFor())
        search_->setText(ToQString(rows_.SearchedFor()));
    const Text count = std::to_string(rows_.Table().RowCount());
    count_->setText(ShownLine(captions_(kCaptionCount, {count})));
    table_->SetEmptyText(CaptionText(captions_, names.empty() ? kCaptionNoFile : rows_.EmptyText()));
}

void RowsPane::ShowButtons() {
    for (std::size_t number = 0; number < buttons_.size(); ++number)
        buttons_[number]->setEnabled(kButtons[number].isOn(rows_));
    import_->setEnabled(rows_.MayEdit());
    export_->setEnabled(rows_.HasFile());
}

void RowsPane::showEvent(QShowEvent* event) {
    SectionPane::showEvent(event);
    timer_->start();
}

void RowsPane::hideEvent(QHideEvent* event) {
    SectionPane::hideEvent(event);
    timer_->stop();
}

}  // namespace nordkeep
