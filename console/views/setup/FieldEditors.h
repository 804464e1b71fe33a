#pragma once

#include "console/setup/FieldForm.h"
#include "console/views/lists/ViewParts.h"

#include <QtGui/QWheelEvent>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QWidget>

#include <functional>

namespace nordkeep {

/// A list of choices on a page: turning the wheel over it moves the page and no value.
class CalmBox final : public QComboBox {
 protected:
    void wheelEvent(QWheelEvent* event) override { event->ignore(); }
};

/// Edits the value of one key. It shows what it is given and tells what a person makes of it.
class FieldEditor : public QWidget {
 public:
    std::function<void(const Text&)> onEdit = [](const Text&) {};
    /// Shows a value without telling it.
    virtual void ShowValue(const Text& value) = 0;
    /// What takes the keys.
    virtual QWidget* Input() = 0;
};

/// What an editor is made from.
struct EditorNeeds {
    FieldForm& form;
    std::size_t field = 0;
    const Captions& captions;
};
/// The editor of a field by its kind of control.
FieldEditor* NewFieldEditor(const EditorNeeds& needs);
/// Makes editors; pages with controls of their own bring another one than NewFieldEditor.
using EditorMaker = FieldEditor* (*)(const EditorNeeds& needs);

// Those with files of their own.
FieldEditor* NewColorEditor(const Captions& captions);
FieldEditor* NewColorPairEditor(const Captions& captions);
FieldEditor* NewColumnsEditor(const Captions& captions);

}  // namespace nordkeep
