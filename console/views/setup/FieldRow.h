#pragma once

#include "console/views/setup/FieldEditors.h"

namespace nordkeep {

/// One key on a page: caption, editor, the way back to the default, and below it the help or what is wrong.
class FieldRow final : public QWidget {
 public:
    FieldRow(const EditorNeeds& needs, EditorMaker make);

    /// Shows the value of the model.
    void ShowValue();
    /// Shows what the model says of it: marks and fault.
    void ShowState();
    void TakeFocus() { editor_->Input()->setFocus(); }

 private:
    const SetupField& Field() const { return needs_.form.Fields()[needs_.field]; }
    QString HelpText() const;

    EditorNeeds needs_;
    QLabel* caption_;
    FieldEditor* editor_;
    QPushButton* default_;
    QLabel* help_;
};

}  // namespace nordkeep
