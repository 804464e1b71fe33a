#pragma once

#include "console/history/HistoryBox.h"
#include "console/views/lists/RowAdapter.h"

#include <QtWidgets/QWidget>

class QComboBox;
class QGridLayout;
class QLabel;
class QLineEdit;
class QPushButton;

namespace nordkeep {

class ListPane;
class NoticeBar;

/// The search in the journal: what is looked for, and what was found.
class SearchPane final : public QWidget {
 public:
    explicit SearchPane(HistoryBox& history, QWidget* parent = nullptr);

    void Refresh();
    /// The fields as the model has them.
    void Fill();
    ListPane& List() const { return *list_; }

 private:
    QWidget* NewFields();
    QLineEdit* NewField(int caption, QGridLayout& grid, int row, int column);
    QWidget* NewButtons();
    void Search();
    void AskExport();

    HistoryBox& history_;
    RowAdapter rows_;
    ListPane* list_ = nullptr;
    QLabel* notice_ = nullptr;
    NoticeBar* trouble_ = nullptr;
    QLineEdit* from_ = nullptr;
    QLineEdit* to_ = nullptr;
    QLineEdit* object_ = nullptr;
    QLineEdit* type_ = nullptr;
    QLineEdit* priority_ = nullptr;
    QLineEdit* doer_ = nullptr;
    QLineEdit* text_ = nullptr;
    QComboBox* what_ = nullptr;
    QPushButton* search_ = nullptr;
    QPushButton* more_ = nullptr;
    QPushButton* all_ = nullptr;
    QPushButton* stop_ = nullptr;
    QPushButton* case_ = nullptr;
    QPushButton* save_ = nullptr;
    QPushButton* print_ = nullptr;
};

}  // namespace nordkeep
