#pragma once

#include "console/views/setup/FieldRow.h"

#include <QtWidgets/QScrollArea>

namespace nordkeep {

/// The fields of a form, one below the other under their headings.
class FieldPane final : public QScrollArea {
 public:
    FieldPane(FieldForm& form, const Captions& captions, EditorMaker make = &NewFieldEditor);

    /// The fields come behind this widget when somebody goes through the window by Tab.
    void FollowInTabs(QWidget* widget) { tabsFollow_ = widget; }
    void FocusFirst();
    /// Shows what the form holds; what is being typed stays.
    void Refresh();

 private:
    void Build();
    void OrderTabs();

    FieldForm& form_;
    const Captions& captions_;
    EditorMaker make_;
    QWidget* tabsFollow_ = nullptr;
    std::vector<FieldRow*> rows_{};
    std::vector<std::size_t> shown_{};
    unsigned shownGeneration_ = 0;
};

}  // namespace nordkeep
