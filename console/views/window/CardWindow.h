#pragma once

#include "console/views/lists/ViewParts.h"
#include "console/window/CardBox.h"

class QTreeWidget;

namespace nordkeep {

/// The card of an object.
class CardWindow final : public QDialog, public WindowView {
 public:
    explicit CardWindow(CardBox& card, QWidget* parent = nullptr);
    ~CardWindow() override { card_.SetView(nullptr); }

    void Show(OpenedBy by) override;
    void Refresh() override;
    void Close() override { hide(); }

 protected:
    void reject() override { card_.Close(); }

 private:
    void FillParts();

    CardBox& card_;
    std::vector<CardBox::Part> shown_{};
    QTreeWidget* parts_ = nullptr;
    QLabel* heading_ = nullptr;
    QPlainTextEdit* instruction_ = nullptr;
    QPushButton* sheet_ = nullptr;
    QPushButton* map_ = nullptr;
    QPushButton* service_ = nullptr;
    QPushButton* reset_ = nullptr;
    QPushButton* history_ = nullptr;
};

}  // namespace nordkeep
