#pragma once

#include "app/PlaceEditors.h"
#include "console/editors/EventCodeFormat.h"
#include "console/editors/FieldMapFormat.h"
#include "console/editors/ObjectFormBox.h"
#include "console/editors/ObjectFormat.h"
#include "console/editors/SetsBox.h"
#include "console/editors/TypeFormat.h"
#include "console/editors/UserFormat.h"

namespace nordkeep {

/// The editors of the set-up, each with the format of its files.
class SetupEditors {
 public:
    SetupEditors(const PlaceEditors::Needs& needs, Dialogs& dialogs, ObjectForms& forms);
    SetupEditors(const SetupEditors&) = delete;
    SetupEditors& operator=(const SetupEditors&) = delete;

    SetsBox& Sets() { return sets_; }
    ObjectFormBox& ObjectForm() { return objectForm_; }
    RowsBox& Objects() { return objects_; }
    RowsBox& Types() { return types_; }
    /// In the order of their pages.
    std::vector<RowsBox*> All() { return {&objects_, &types_, &eventCodes_, &fieldMaps_, &users_}; }

 private:
    RowsBox::Needs RowsNeeds();

    PlaceEditors::Needs needs_;
    Dialogs& dialogs_;
    PlaceEditors host_;
    ObjectFormat objectFormat_;
    TypeFormat typeFormat_;
    EventCodeFormat eventCodeFormat_;
    FieldMapFormat fieldMapFormat_;
    UserFormat userFormat_;
    RowsBox objects_;
    RowsBox types_;
    RowsBox eventCodes_;
    RowsBox fieldMaps_;
    RowsBox users_;
    SetsBox sets_;
    ObjectFormBox objectForm_;
};

}  // namespace nordkeep
