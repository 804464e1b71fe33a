#include "console/views/editors/ObjectFormWindow.h"

#include "console/lists/SharedCaptions.h"
#include "console/views/editors/RowEditors.h"

#include <QtGui/QCloseEvent>
#include <QtGui/QShortcut>
#include <QtWidgets/QBoxLayout>

namespace nordkeep {
namespace {

constexpr int kCaptionAsText = 5124;
constexpr int kCaptionOther = 5125;
constexpr int kOtherHeight = 110;  // px

}  // namespace

ObjectFormWindow::ObjectFormWindow(ObjectFormBox& form, const Captions& captions, QWidget* parent)
    : QDialog(parent), form_(form), captions_(captions) {
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    setModal(false);
    fields_ = new FieldPane(form, captions, &NewRowEditor);
    other_ = NewReadOnlyBox();
    other_->setFixedHeight(kOtherHeight);
    otherPart_ = new QWidget;
    auto* others = new QVBoxLayout(otherPart_);
    others->setContentsMargins(0, 0, 0, 0);
    others->addWidget(NewHeading(CaptionText(captions, kCaptionOther), other_));
    others->addWidget(other_);
    notice_ = new NoticeBar;
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(fields_, 1);
    layout->addWidget(otherPart_);
    layout->addWidget(notice_);
    layout->addLayout(NewButtons());
    connect(new QShortcut(Qt::CTRL | Qt::Key_S, this), &QShortcut::activated, this, [this] { form_.Save(); });
    resize(720, 640);
}

QLayout* ObjectFormWindow::NewButtons() {
    auto* row = new QHBoxLayout;
    auto* asText = NewButton(captions_, kCaptionAsText);
    save_ = NewButton(captions_, kCaptionSave);
    save_->setToolTip(QKeySequence(Qt::CTRL | Qt::Key_S).toString(QKeySequence::NativeText));
    auto* close = NewButton(captions_, kCaptionBack);
    for (QPushButton* button : {asText, save_, close}) button->setAutoDefault(false);
    row->addWidget(asText);
    row->addStretch(1);
    row->addWidget(save_);
    row->addWidget(close);
    connect(asText, &QPushButton::clicked, this, [this] { form_.EditAsText(); });
    connect(save_, &QPushButton::clicked, this, [this] { form_.Save(); });
    connect(close, &QPushButton::clicked, this, [this] { form_.Close(); });
    return row;
}

void ObjectFormWindow::Show(OpenedBy by) {
    setWindowTitle(ShownLine(form_.Title()));
    Refresh();
    BringToFront(*this, by == OpenedBy::Operator);
    fields_->FocusFirst();
}

void ObjectFormWindow::Refresh() {
    fields_->Refresh();
    SetBoxText(*other_, ShownText(form_.Other()));
    otherPart_->setVisible(!form_.Other().empty());
    notice_->SetNotice(ShownText(form_.Notice().text), form_.Notice().isGood);
    save_->setEnabled(form_.MaySave());
}

void ObjectFormWindow::closeEvent(QCloseEvent* event) {
    event->ignore();
    form_.Close();
}

}  // namespace nordkeep
