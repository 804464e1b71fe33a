#pragma once

#include "console/setup/LinesBox.h"
#include "console/views/setup/FieldPane.h"
#include "console/views/setup/SectionPane.h"

class QTableWidget;
class QTimer;

namespace nordkeep {

/// The page of the lines: how they do, and the settings of one of them.
class LinesPane final : public SectionPane {
 public:
    LinesPane(LinesBox& lines, const Captions& captions);

    void FollowInTabs(QWidget* widget) override;
    void Refresh() override;

 protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

 private:
    QWidget* NewButtons();
    QWidget* NewSteps();
    void ShowRows();
    void ShowButtons();

    LinesBox& lines_;
    const Captions& captions_;
    QTableWidget* table_ = nullptr;
    QLabel* empty_ = nullptr;
    FieldPane* fields_ = nullptr;
    QTimer* timer_ = nullptr;
    QPushButton* new_ = nullptr;
    QPushButton* copy_ = nullptr;
    QPushButton* remove_ = nullptr;
    QPushButton* hold_ = nullptr;
    QPushButton* mute_ = nullptr;
    QPushButton* test_ = nullptr;
    QWidget* steps_ = nullptr;
    QLabel* step_ = nullptr;
    QPushButton* back_ = nullptr;
    QPushButton* on_ = nullptr;
};

}  // namespace nordkeep
