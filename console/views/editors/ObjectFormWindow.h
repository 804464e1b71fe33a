#pragma once

#include "console/editors/ObjectFormBox.h"
#include "console/views/setup/FieldPane.h"

namespace nordkeep {

/// The window of an object's form.
class ObjectFormWindow final : public QDialog, public WindowView {
 public:
    ObjectFormWindow(ObjectFormBox& form, const Captions& captions, QWidget* parent = nullptr);

    void Show(OpenedBy by) override;
    void Refresh() override;
    void Close() override { hide(); }

 protected:
    void closeEvent(QCloseEvent* event) override;
    void reject() override { form_.Close(); }

 private:
    QLayout* NewButtons();

    ObjectFormBox& form_;
    const Captions& captions_;
    FieldPane* fields_ = nullptr;
    QWidget* otherPart_ = nullptr;
    QPlainTextEdit* other_ = nullptr;
    NoticeBar* notice_ = nullptr;
    QPushButton* save_ = nullptr;
};

}  // namespace nordkeep
