#pragma once

#include "console/boxes/EditorBox.h"
#include "console/views/lists/ViewParts.h"

class QListWidget;
class QTimer;

namespace nordkeep {

/// The window of the plain text editor.
class EditorWindow final : public QDialog, public WindowView {
 public:
    EditorWindow(EditorBox& editor, const Captions& captions, QWidget* parent = nullptr);

    void Show(OpenedBy by) override;
    void Refresh() override;
    void Close() override { hide(); }

 protected:
    void reject() override { editor_.Close(); }
    void closeEvent(QCloseEvent* event) override;

 private:
    void AddFaults();
    void ShowFaults();
    void GoTo(int line);

    EditorBox& editor_;
    const Captions& captions_;
    QPlainTextEdit* text_ = nullptr;
    QListWidget* faults_ = nullptr;
    QTimer* checkTimer_ = nullptr;
    NoticeBar* notice_ = nullptr;
    QPushButton* save_ = nullptr;
    unsigned shownGeneration_ = 0;
};

}  // namespace nordkeep
