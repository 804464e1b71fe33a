#pragma once

#include "console/editors/SetsBox.h"
#include "console/views/lists/ListPane.h"
#include "console/views/setup/FieldPane.h"
#include "console/views/setup/SectionPane.h"

class QLineEdit;

namespace nordkeep {

class CutsPane;

/// The page of the sets: their list, how each cuts a telegram, and what would become of one.
class SetsPane final : public SectionPane {
 public:
    SetsPane(SetsBox& sets, const Captions& captions);

    void FollowInTabs(QWidget* widget) override;
    void Refresh() override;

 private:
    QWidget* NewButtons();
    QWidget* NewSample();

    SetsBox& sets_;
    const Captions& captions_;
    RowAdapter* adapter_ = nullptr;
    ListPane* table_ = nullptr;
    QPushButton* new_ = nullptr;
    QPushButton* copy_ = nullptr;
    QLineEdit* sample_ = nullptr;
    CutsPane* cuts_ = nullptr;
    QLabel* outcome_ = nullptr;
    FieldPane* fields_ = nullptr;
};

}  // namespace nordkeep
