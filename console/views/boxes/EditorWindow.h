#pragma once

#include "console/boxes/EditorBox.h"
#include "console/views/lists/ViewParts.h"

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
    EditorBox& editor_;
    QPlainTextEdit* text_ = nullptr;
    NoticeBar* notice_ = nullptr;
    QPushButton* save_ = nullptr;
    unsigned shownGeneration_ = 0;
};

}  // namespace nordkeep
