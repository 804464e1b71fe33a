#pragma once

#include "console/editors/RowsBox.h"
#include "console/views/lists/ListPane.h"
#include "console/views/setup/FieldPane.h"
#include "console/views/setup/SectionPane.h"

class QComboBox;
class QLineEdit;
class QTimer;

namespace nordkeep {

/// The page of an editor: which file, a search, the table of its rows, and the fields of one of them.
class RowsPane : public SectionPane {
 public:
    RowsPane(RowsBox& rows, const Captions& captions);

    void FollowInTabs(QWidget* widget) override;
    void Refresh() override;

 protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    RowsBox& Rows() { return rows_; }
    const Captions& Words() const { return captions_; }

 private:
    QWidget* NewTop();
    QWidget* NewButtons();
    QWidget* NewBottom();
    QWidget* NewFacts();
    QWidget* NewCodeTexts();
    void ShowFiles();
    void ShowButtons();
    void AddKeys();
    void AskImport();
    void PreviewImport(const QString& file);
    void AskExport();

    RowsBox& rows_;
    const Captions& captions_;
    QComboBox* files_ = nullptr;
    QLineEdit* search_ = nullptr;
    QLabel* count_ = nullptr;
    RowAdapter* adapter_ = nullptr;
    ListPane* table_ = nullptr;
    FieldPane* fields_ = nullptr;
    QLabel* rowFault_ = nullptr;
    QWidget* beside_ = nullptr;
    QPushButton* codeTexts_ = nullptr;
    QLabel* facts_ = nullptr;
    QLineEdit* sample_ = nullptr;
    QLabel* outcome_ = nullptr;
    QTimer* timer_ = nullptr;
    std::vector<QPushButton*> buttons_{};
    QPushButton* import_ = nullptr;
    QPushButton* export_ = nullptr;
};

}  // namespace nordkeep
