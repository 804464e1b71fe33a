#include "console/views/window/DebugPane.h"

#include "console/lists/SharedCaptions.h"
#include "console/views/lists/ListPane.h"
#include "console/views/lists/ViewParts.h"
#include "console/window/Commands.h"

#include <QtCore/QSignalBlocker>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QGridLayout>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QScrollArea>
#include <QtWidgets/QVBoxLayout>

namespace nordkeep {
namespace {

constexpr int kCaptionWatch = 3320;
constexpr int kCaptionSend = 3321;
constexpr int kCaptionIgnore = 3322;
constexpr int kCaptionLastRow = 3323;
constexpr int kCaptionHex = 3324;
constexpr int kCaptionSaveFile = 3325;
constexpr int kCaptionClear = 3326;
constexpr int kCaptionMessage = 3328;
constexpr int kMostMessagesKept = 20;
constexpr int kPortsInARow = 8;  // a centre has up to 20

}  // namespace

DebugPane::DebugPane(DebugPage& panel, const Captions& captions, QWidget* parent)
    : QWidget(parent), panel_(panel), captions_(captions), rows_(panel.List()) {
    // A row of many ports must not make the window wider than a small screen.
    auto* scroll = new QScrollArea;
    scroll->setWidgetResizable(true);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setFocusPolicy(Qt::NoFocus);
    auto* all = new QVBoxLayout(this);
    all->setContentsMargins(0, 0, 0, 0);
    all->addWidget(scroll);
    auto* content = new QWidget;
    scroll->setWidget(content);
    auto* layout = new QVBoxLayout(content);
    layout->setContentsMargins(6, 6, 6, 6);
    watch_ = new QGridLayout;
    layout->addLayout(watch_);
    list_ = new ListPane(rows_);
    list_->horizontalHeader()->hide();
    list_->setColumnHidden(0, true);
    list_->StretchLastColumn();
    list_->setAccessibleName(PlainCaption(captions_, CaptionOf(Tab::Debug)));
    layout->addWidget(list_, 1);
    AddSendLine(*layout);
    AddWatchBoxes();
    Refresh();
}

QCheckBox* DebugPane::NewBox(int caption, std::function<void(bool)> set) {
    auto* box = new QCheckBox(CaptionText(captions_, caption));
    connect(box, &QCheckBox::toggled, this, [set = std::move(set)](bool isOn) { set(isOn); });
    return box;
}

void DebugPane::AddWatchBoxes() {
    while (QLayoutItem* item = watch_->takeAt(0)) {
        delete item->widget();
        delete item;
    }
    watchBoxes_.clear();
    watch_->addWidget(NewHeading(CaptionText(captions_, kCaptionWatch)), 0, 0);
    for (std::size_t i = 0; i < panel_.Ports().size(); ++i) {
        const DebugPort& port = panel_.Ports()[i];
        auto* box = new QCheckBox(WithoutMnemonics(ShownLine(port.name)));
        box->setToolTip(PlainToolTip(ShownLine(port.description)));
        box->setChecked(port.isWatched);
        connect(box, &QCheckBox::toggled, this, [this, i](bool isOn) { panel_.Watch(i, isOn); });
        const int place = static_cast<int>(i);
        watch_->addWidget(box, place / kPortsInARow, 1 + place % kPortsInARow);
        watchBoxes_.push_back(box);
    }
    watch_->setColumnStretch(kPortsInARow + 1, 1);
    auto* hex = NewBox(kCaptionHex, [this](bool isOn) { panel_.SetHex(isOn); });
    hex->setChecked(panel_.IsHex());
    watch_->addWidget(hex, 0, kPortsInARow + 2);
    auto* last = NewBox(kCaptionLastRow, [this](bool isOn) {
        panel_.SetShowLastRow(isOn);
        list_->FollowEnd(isOn);
    });
    last->setChecked(panel_.ShowsLastRow());
    list_->FollowEnd(panel_.ShowsLastRow());
    watch_->addWidget(last, 0, kPortsInARow + 3);
    QSignalBlocker block(ports_);
    ports_->clear();
    for (const DebugPort& port : panel_.Ports()) {
        ports_->addItem(ShownLine(port.name + " " + port.description));
    }
    ports_->setCurrentIndex(panel_.Chosen());
}

void DebugPane::AddSendLine(QLayout& layout) {
    auto* line = new QHBoxLayout;
    ports_ = new QComboBox;
    message_ = new QComboBox;
    message_->setEditable(true);
    message_->setMaxCount(kMostMessagesKept);
    message_->setInsertPolicy(QComboBox::NoInsert);
    for (auto [caption, box] : {std::pair{kCaptionPort, ports_}, std::pair{kCaptionMessage, message_}}) {
        QLabel* label = NewLabel(CaptionText(captions_, caption));
        label->setBuddy(box);
        box->setAccessibleName(CaptionText(captions_, caption));
        line->addWidget(label);
        line->addWidget(box, box == message_ ? 3 : 1);
    }
    send_ = NewButton(captions_, kCaptionSend);
    save_ = NewButton(captions_, kCaptionSaveFile);
    QPushButton* clear = NewButton(captions_, kCaptionClear);
    ignore_ = NewBox(kCaptionIgnore, [this](bool isOn) { panel_.IgnoreResponse(isOn); });
    for (QWidget* widget : {static_cast<QWidget*>(send_), static_cast<QWidget*>(ignore_),
                            static_cast<QWidget*>(save_), static_cast<QWidget*>(clear)}) {
        line->addWidget(widget);
    }
    static_cast<QVBoxLayout&>(layout).addLayout(line);
    connect(ports_, &QComboBox::currentIndexChanged, this, [this](int index) {
        panel_.Choose(index);
        Refresh();
    });
    const auto send = [this] {
        const QString text = message_->currentText();
        panel_.Send(TypedText(text));
        if (message_->findText(text) < 0) message_->insertItem(0, text);
    };
    connect(send_, &QPushButton::clicked, this, send);
    connect(message_->lineEdit(), &QLineEdit::returnPressed, this, send);
    connect(save_, &QPushButton::clicked, this, [this] { panel_.Save(); });
    connect(clear, &QPushButton::clicked, this, [this] { panel_.Clear(); });
}

void DebugPane::Refresh() {
    if (watchBoxes_.size() != panel_.Ports().size()) AddWatchBoxes();
    const bool hasPort = panel_.Chosen() >= 0;
    send_->setEnabled(hasPort);
    save_->setEnabled(!panel_.Ports().empty());
    ignore_->setEnabled(hasPort);
    const QSignalBlocker block(ignore_);
    ignore_->setChecked(panel_.IsIgnoringResponse());
}

}  // namespace nordkeep
