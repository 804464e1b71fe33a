#include "console/views/boxes/PeriodDialog.h"

#include "console/lists/SharedCaptions.h"
#include "platform/qt/QtText.h"

#include <QtCore/QSignalBlocker>
#include <QtGui/QCloseEvent>
#include <QtWidgets/QBoxLayout>
#include <QtWidgets/QCalendarWidget>
#include <QtWidgets/QDateTimeEdit>
#include <QtWidgets/QGridLayout>
#include <QtWidgets/QLineEdit>

namespace nordkeep {
namespace {

constexpr int kCaptionFrom = 3354;
constexpr int kCaptionTo = 3355;
constexpr int kCaptionInPeriod = 3356;
constexpr int kCaptionFromNow = 3357;
constexpr int kCaptionReason = 5102;
constexpr int kCaptionAroundTheClock = 5103;
constexpr int kLongestReason = 200;

OleDate DateOf(const QDateEdit& date, const QTimeEdit& time) {
    const QDate day = date.date();
    return OleDate::FromCivil(
        {day.year(), day.month(), day.day(), time.time().hour(), time.time().minute(), 0});
}

void Put(OleDate moment, QDateEdit& date, QTimeEdit& time) {
    const CivilTime civil = moment.Civil();
    const QSignalBlocker silentDate(date);
    const QSignalBlocker silentTime(time);
    date.setDate(QDate(civil.year, civil.month, civil.day));
    time.setTime(QTime(civil.hour, civil.minute));
}

}  // namespace

PeriodDialog::PeriodDialog(PeriodBox& period, const Captions& captions, QWidget* parent)
    : QDialog(parent), period_(period), start_(NewMoment()), stop_(NewMoment()) {
    setModal(false);
    notice_ = new NoticeBar;
    auto* grid = new QGridLayout;
    grid->addWidget(NewHeading(CaptionText(captions, kCaptionFrom), start_.date), 0, 0);
    grid->addWidget(start_.date, 0, 1);
    grid->addWidget(start_.time, 0, 2);
    grid->addWidget(NewHeading(CaptionText(captions, kCaptionTo), stop_.date), 1, 0);
    grid->addWidget(stop_.date, 1, 1);
    grid->addWidget(stop_.time, 1, 2);
    // A heading belongs to the date beside it; the time has the same name.
    start_.time->setAccessibleName(CaptionText(captions, kCaptionFrom));
    stop_.time->setAccessibleName(CaptionText(captions, kCaptionTo));
    reason_ = new QLineEdit;
    reason_->setMaxLength(kLongestReason);
    grid->addWidget(NewHeading(CaptionText(captions, kCaptionReason), reason_), 2, 0);
    grid->addWidget(reason_, 2, 1, 1, 2);
    connect(reason_, &QLineEdit::textChanged, this, [this](const QString& text) {
        period_.SetReason(FromQString(text));
        Refresh();
    });
    grid->setColumnMinimumWidth(1, 160);
    grid->setColumnStretch(1, 1);
    inPeriod_ = NewButton(captions, kCaptionInPeriod);
    fromNow_ = NewButton(captions, kCaptionFromNow);
    aroundTheClock_ = NewButton(captions, kCaptionAroundTheClock);
    auto* cancel = new QPushButton(ShownLine(captions.FromFile(kTextCancel)));
    cancel->setAutoDefault(false);
    auto* buttons = new QHBoxLayout;
    for (QPushButton* button : {fromNow_, inPeriod_, aroundTheClock_, cancel}) buttons->addWidget(button);
    auto* layout = new QVBoxLayout(this);
    layout->setSizeConstraint(QLayout::SetFixedSize);  // the notice comes and goes
    layout->addLayout(grid);
    layout->addWidget(notice_);
    layout->addStretch(1);
    layout->addLayout(buttons);
    connect(inPeriod_, &QPushButton::clicked, this, [this] { period_.ChoosePeriod(); });
    connect(fromNow_, &QPushButton::clicked, this, [this] { period_.ChooseFromNow(); });
    connect(aroundTheClock_, &QPushButton::clicked, this, [this] { period_.ChooseAroundTheClock(); });
    connect(cancel, &QPushButton::clicked, this, [this] { period_.Close(); });
}

PeriodDialog::Moment PeriodDialog::NewMoment() {
    Moment moment{new QDateEdit, new QTimeEdit};
    moment.date->setCalendarPopup(true);
    moment.date->setDisplayFormat(QStringLiteral("yyyy-MM-dd"));
    moment.time->setDisplayFormat(QStringLiteral("HH:mm"));
    connect(moment.date, &QDateEdit::dateChanged, this, [this] { TakeTimes(); });
    connect(moment.time, &QTimeEdit::timeChanged, this, [this] { TakeTimes(); });
    return moment;
}

void PeriodDialog::TakeTimes() {
    period_.SetTimes(DateOf(*start_.date, *start_.time), DateOf(*stop_.date, *stop_.time));
    Refresh();
}

void PeriodDialog::Show(OpenedBy by) {
    setWindowTitle(ShownLine(period_.Title()));
    Put(period_.Start(), *start_.date, *start_.time);
    Put(period_.Stop(), *stop_.date, *stop_.time);
    reason_->setText(ToQString(period_.Reason()));
    Refresh();
    BringToFront(*this, by == OpenedBy::Operator);
    stop_.time->setFocus();
}

void PeriodDialog::Refresh() {
    notice_->SetNotice(ShownText(period_.Notice()));
    inPeriod_->setEnabled(period_.IsPeriodEnabled());
    fromNow_->setEnabled(period_.IsFromNowEnabled());
    aroundTheClock_->setEnabled(period_.IsAroundTheClockEnabled());
}

void PeriodDialog::closeEvent(QCloseEvent* event) {
    event->ignore();
    period_.Close();
}

}  // namespace nordkeep
