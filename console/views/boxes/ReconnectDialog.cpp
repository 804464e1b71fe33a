#include "console/views/boxes/ReconnectDialog.h"

#include <QtGui/QCloseEvent>
#include <QtWidgets/QBoxLayout>

namespace nordkeep {
namespace {

constexpr int kTextCaption = 1141;
constexpr int kTextReconnect = 1142;
constexpr int kTextShutdown = 1143;

}  // namespace

ReconnectDialog::ReconnectDialog(ReconnectBox& box, const Language& language, QWidget* parent)
    : QDialog(parent), box_(box) {
    const auto text = [&](int number) { return ShownLine(language.GetLanguageText(number)); };
    setModal(false);
    setWindowFlag(Qt::WindowStaysOnTopHint);
    setWindowTitle(text(kTextCaption));
    label_ = NewHeading({});
    label_->setWordWrap(true);
    label_->setAlignment(Qt::AlignCenter);
    label_->setAutoFillBackground(true);
    label_->setMargin(16);
    label_->setMinimumWidth(420);
    countdown_ = NewLabel();
    countdown_->setAlignment(Qt::AlignCenter);
    reconnect_ = new QPushButton(text(kTextReconnect));
    auto* shutdown = new QPushButton(text(kTextShutdown));
    shutdown->setAutoDefault(false);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(reconnect_);
    buttons->addWidget(shutdown);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(label_);
    layout->addWidget(countdown_);
    layout->addLayout(buttons);
    connect(reconnect_, &QPushButton::clicked, this, [this] { box_.Reconnect(); });
    connect(shutdown, &QPushButton::clicked, this, [this] { box_.Shutdown(); });
}

void ReconnectDialog::Show(OpenedBy by) {
    Refresh();
    BringToFront(*this, by == OpenedBy::Operator);
}

void ReconnectDialog::Refresh() {
    label_->setText(ShownLine(box_.Label()));
    countdown_->setText(ShownLine(box_.Countdown()));
    reconnect_->setEnabled(box_.IsReconnectEnabled());
    QPalette colors = palette();
    if (box_.IsFlashed()) {
        colors.setColor(QPalette::Window, QColor(0xC6, 0x00, 0x1E));
        colors.setColor(QPalette::WindowText, Qt::white);
    }
    label_->setPalette(colors);
}

void ReconnectDialog::closeEvent(QCloseEvent* event) {
    event->ignore();
}

}  // namespace nordkeep
