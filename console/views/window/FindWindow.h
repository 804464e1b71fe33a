#pragma once

#include "console/views/lists/RowAdapter.h"
#include "console/window/FindBox.h"

#include <QtWidgets/QDialog>

class QLabel;
class QLineEdit;

namespace nordkeep {

class ListPane;

/// The field that finds everything, and what it has found.
class FindWindow final : public QDialog, public WindowView {
 public:
    explicit FindWindow(FindBox& find, QWidget* parent = nullptr);
    ~FindWindow() override { find_.SetView(nullptr); }

    void Show(OpenedBy by) override;
    void Refresh() override;
    void Close() override { hide(); }

 protected:
    void reject() override { find_.Close(); }
    bool eventFilter(QObject* watched, QEvent* event) override;

 private:
    void SelectRow(int row);

    FindBox& find_;
    RowAdapter rows_;
    QLineEdit* text_ = nullptr;
    ListPane* list_ = nullptr;
    QLabel* notice_ = nullptr;
};

}  // namespace nordkeep
