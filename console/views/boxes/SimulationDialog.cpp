#include "console/views/boxes/SimulationDialog.h"

#include "console/lists/SharedCaptions.h"
#include "platform/qt/QtText.h"

#include <QtGui/QCloseEvent>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QFormLayout>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QSpinBox>

namespace nordkeep {
namespace {

constexpr int kCaptionTitle = 3563;
constexpr int kCaptionNoPort = 3720;
constexpr int kCaptionProtocol = 3721;
constexpr int kCaptionAlarmCode = 3722;
constexpr int kCaptionExtraText = 3723;
constexpr int kCaptionPrio = 3724;
constexpr int kCaptionType = 3725;
constexpr int kCaptionRaise = 3726;
constexpr int kLastProtocol = 40;

}  // namespace

SimulationDialog::SimulationDialog(SimulationBox& simulation, const Captions& captions, QWidget* parent)
    : QDialog(parent), simulation_(simulation), captions_(captions) {
    setModal(false);
    setWindowTitle(PlainCaption(captions, kCaptionTitle));
    port_ = new QComboBox;
    protocol_ = new QSpinBox;
    protocol_->setRange(0, kLastProtocol);
    for (QLineEdit** box : {&alarmCode_, &extraText_, &prio_, &type_}) *box = new QLineEdit;
    auto* form = new QFormLayout;
    const auto row = [&](int caption, QWidget* box) {
        form->addRow(NewHeading(CaptionText(captions, caption), box), box);
    };
    row(kCaptionPort, port_);
    row(kCaptionProtocol, protocol_);
    row(kCaptionAlarmCode, alarmCode_);
    row(kCaptionExtraText, extraText_);
    row(kCaptionPrio, prio_);
    row(kCaptionType, type_);
    auto* raise = NewButton(captions, kCaptionRaise);
    raise->setDefault(true);
    auto* close = NewButton(captions, kCaptionClose);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(raise);
    buttons->addWidget(close);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addLayout(buttons);
    connect(raise, &QPushButton::clicked, this, [this] { Raise(); });
    connect(close, &QPushButton::clicked, this, [this] { simulation_.Close(); });
    setMinimumWidth(420);
}

void SimulationDialog::Show(OpenedBy by) {
    const int chosen = qMax(0, port_->currentIndex());
    port_->clear();
    port_->addItem(CaptionText(captions_, kCaptionNoPort));
    for (const Text& name : simulation_.PortNames()) port_->addItem(ShownLine(name));
    port_->setCurrentIndex(chosen < port_->count() ? chosen : 0);
    BringToFront(*this, by == OpenedBy::Operator);
    alarmCode_->setFocus();
}

void SimulationDialog::Raise() {
    simulation_.Raise({.port = static_cast<std::size_t>(qMax(0, port_->currentIndex())),
                       .protocol = protocol_->value(),
                       .alarmCode = FromQString(alarmCode_->text()),
                       .extraText = FromQString(extraText_->text()),
                       .prio = FromQString(prio_->text()),
                       .type = FromQString(type_->text())});
}

void SimulationDialog::closeEvent(QCloseEvent* event) {
    event->ignore();
    simulation_.Close();
}

}  // namespace nordkeep
