#include "console/views/editors/SetsPane.h"

#include "console/views/editors/CutsPane.h"
#include "platform/qt/QtText.h"
#include "runtime/Fields.h"

#include <QtWidgets/QBoxLayout>
#include <QtWidgets/QLineEdit>

namespace nordkeep {
namespace {

constexpr int kCaptionNew = 4708;
constexpr int kCaptionCopy = 4709;
constexpr int kCaptionNoSet = 4714;
constexpr int kCaptionSample = 4918;
constexpr int kTableHeight = 170;  // px

}  // namespace

SetsPane::SetsPane(SetsBox& sets, const Captions& captions) : sets_(sets), captions_(captions) {
    adapter_ = new RowAdapter(sets.Table(), this);
    table_ = new ListPane(*adapter_);
    table_->setSelectionMode(QAbstractItemView::SingleSelection);
    table_->setAccessibleName(ShownLine(sets.Caption()));
    table_->StretchLastColumn();
    table_->setFixedHeight(kTableHeight);
    table_->SetEmptyText(CaptionText(captions, kCaptionNoSet));
    fields_ = new FieldPane(sets, captions);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(table_);
    layout->addWidget(NewButtons());
    layout->addWidget(NewSample());
    layout->addWidget(fields_, 1);
    table_->onSelection = [this] {
        const Text key = table_->CurrentKey();
        if (!key.empty()) sets_.Select(static_cast<std::size_t>(LeadingInt32(key)));
    };
    table_->onActivate = [this] { fields_->FocusFirst(); };
}

QWidget* SetsPane::NewButtons() {
    auto* frame = new QWidget;
    auto* layout = new QHBoxLayout(frame);
    layout->setContentsMargins(0, 0, 0, 0);
    new_ = NewButton(captions_, kCaptionNew);
    copy_ = NewButton(captions_, kCaptionCopy);
    layout->addWidget(new_);
    layout->addWidget(copy_);
    layout->addStretch(1);
    connect(new_, &QPushButton::clicked, this, [this] {
        sets_.New();
        fields_->FocusFirst();
    });
    connect(copy_, &QPushButton::clicked, this, [this] {
        sets_.Copy();
        fields_->FocusFirst();
    });
    return frame;
}

QWidget* SetsPane::NewSample() {
    auto* frame = new QWidget;
    auto* layout = new QVBoxLayout(frame);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* line = new QHBoxLayout;
    sample_ = new QLineEdit;
    sample_->setAccessibleName(PlainCaption(captions_, kCaptionSample));
    auto* label = NewLabel(CaptionText(captions_, kCaptionSample));
    label->setBuddy(sample_);
    line->addWidget(label);
    line->addWidget(sample_, 1);
    cuts_ = new CutsPane(sets_);
    outcome_ = NewDataLabel();
    layout->addLayout(line);
    layout->addWidget(cuts_);
    layout->addWidget(outcome_);
    connect(sample_, &QLineEdit::textEdited, this,
            [this](const QString& text) { sets_.TypeSample(FromQString(text)); });
    return frame;
}

void SetsPane::FollowInTabs(QWidget* widget) {
    QWidget* last = widget;
    for (QWidget* next : {static_cast<QWidget*>(table_), static_cast<QWidget*>(new_),
                          static_cast<QWidget*>(copy_), static_cast<QWidget*>(sample_)}) {
        setTabOrder(last, next);
        last = next;
    }
    fields_->FollowInTabs(last);
}

void SetsPane::Refresh() {
    sets_.Table().Flush();
    const Text current = sets_.CurrentKey();
    if (table_->CurrentKey() != current)
        table_->SelectKeys(current.empty() ? std::vector<Text>() : std::vector<Text>{current}, current);
    new_->setEnabled(sets_.MayEdit() && !sets_.IsNew());
    copy_->setEnabled(sets_.MayEdit() && sets_.Current());
    fields_->setVisible(sets_.IsNew() || sets_.Current());
    fields_->Refresh();
    const QString sample = ToQString(sets_.Sample());
    if (sample_->text() != sample) sample_->setText(sample);
    cuts_->Renew();
    outcome_->setText(ShownText(sets_.Outcome()));
    outcome_->setVisible(!sets_.Outcome().empty());
    onChange();
}

}  // namespace nordkeep
