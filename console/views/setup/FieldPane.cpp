#include "console/views/setup/FieldPane.h"

#include <QtWidgets/QBoxLayout>

namespace nordkeep {
namespace {

constexpr int kGap = 12;  // px

}  // namespace

FieldPane::FieldPane(FieldForm& form, const Captions& captions, EditorMaker make)
    : form_(form), captions_(captions), make_(make) {
    setWidgetResizable(true);
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFocusPolicy(Qt::NoFocus);
}

void FieldPane::Refresh() {
    std::vector<std::size_t> fields;
    for (const SetupGroup& group : form_.Shown()) {
        fields.insert(fields.end(), group.fields.begin(), group.fields.end());
    }
    const bool isNew = shownGeneration_ != form_.Generation();
    shownGeneration_ = form_.Generation();
    if (isNew && (fields != shown_ || fields.empty())) {
        shown_ = std::move(fields);
        return Build();
    }
    for (FieldRow* row : rows_) {
        if (isNew) row->ShowValue();
        row->ShowState();
    }
}

void FieldPane::FocusFirst() {
    if (!rows_.empty()) rows_.front()->TakeFocus();
}

void FieldPane::Build() {
    auto* page = new QWidget;
    auto* layout = new QVBoxLayout(page);
    layout->setContentsMargins(0, 0, kGap, 0);
    rows_.clear();
    for (const SetupGroup& group : form_.Shown()) {
        if (!group.caption.empty()) layout->addWidget(NewHeading(ShownLine(group.caption)));
        for (const std::size_t field : group.fields) {
            rows_.push_back(new FieldRow({form_, field, captions_}, make_));
            layout->addWidget(rows_.back());
        }
        layout->addSpacing(kGap);
    }
    layout->addStretch(1);
    // The old page may be in the middle of telling what was typed.
    if (QWidget* old = takeWidget()) old->deleteLater();
    setWidget(page);
    OrderTabs();
}

// A page is made later than the buttons below it, and is to be reached before them all the same.
void FieldPane::OrderTabs() {
    QWidget* last = tabsFollow_;
    if (!last) return;
    for (FieldRow* row : rows_) {
        for (QWidget* part : row->findChildren<QWidget*>()) {
            // The list of a choice is a window of its own.
            if (part->window() != window() || (part->focusPolicy() & Qt::TabFocus) == 0) continue;
            setTabOrder(last, part);
            last = part;
        }
    }
}

}  // namespace nordkeep
