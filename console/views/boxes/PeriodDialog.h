#pragma once

#include "console/boxes/PeriodBox.h"
#include "console/views/lists/ViewParts.h"

class QLineEdit;
class QDateEdit;
class QTimeEdit;

namespace nordkeep {

/// Asks from when to when an object's events are only logged.
class PeriodDialog final : public QDialog, public WindowView {
 public:
    PeriodDialog(PeriodBox& period, const Captions& captions, QWidget* parent = nullptr);

    void Show(OpenedBy by) override;
    void Refresh() override;
    void Close() override { hide(); }

 protected:
    void reject() override { period_.Close(); }
    void closeEvent(QCloseEvent* event) override;

 private:
    struct Moment {
        QDateEdit* date = nullptr;
        QTimeEdit* time = nullptr;
    };
    Moment NewMoment();
    void TakeTimes();

    PeriodBox& period_;
    Moment start_;
    Moment stop_;
    NoticeBar* notice_ = nullptr;
    QPushButton* inPeriod_ = nullptr;
    QPushButton* aroundTheClock_ = nullptr;
    QLineEdit* reason_ = nullptr;
    QPushButton* fromNow_ = nullptr;
};

}  // namespace nordkeep
