#include "app/SetupEditors.h"

#include "ports/FieldMap.h"

namespace nordkeep {
namespace {

std::vector<Text> MappedFields() {
    std::vector<Text> keys;
    for (const TextView key : FieldMapKeys()) keys.emplace_back(key);
    return keys;
}

RowsBox::Needs With(RowFacts& facts, RowsBox::Needs needs) {
    needs.facts = &facts;
    return needs;
}

RowsBox::Needs OnServerOnly(RowsBox::Needs needs) {
    needs.isOnServerOnly = true;
    return needs;
}

}  // namespace

SetupEditors::SetupEditors(const PlaceEditors::Needs& needs, Dialogs& dialogs, ObjectForms& forms)
    : needs_(needs),
      dialogs_(dialogs),
      host_(needs),
      objectFormat_({.captions = needs.captions,
                     .language = needs.foundation.Texts(),
                     .clock = needs.foundation.Platform().clock,
                     .host = host_}),
      typeFormat_(needs.foundation.Texts()),
      eventCodeFormat_(needs.foundation.Texts()),
      fieldMapFormat_(needs.foundation.Texts(), MappedFields()),
      userFormat_(needs.foundation.Texts(), needs.captions),
      objects_(With(host_, RowsNeeds()), objectFormat_),
      types_(RowsNeeds(), typeFormat_),
      eventCodes_(RowsNeeds(), eventCodeFormat_),
      fieldMaps_(RowsNeeds(), fieldMapFormat_),
      users_(OnServerOnly(RowsNeeds()), userFormat_),
      sets_({.files = needs.files,
             .dialogs = dialogs,
             .captions = needs.captions,
             .state = needs.state,
             .host = host_,
             .facts = host_}),
      objectForm_({.files = needs.files,
                   .dialogs = dialogs,
                   .captions = needs.captions,
                   .state = needs.state,
                   .host = host_,
                   .forms = forms}) {
    sets_.onSets = [this] {
        for (RowsBox* rows : {&objects_, &types_, &eventCodes_}) rows->RenewFiles();
    };
    sets_.onRename = [this](const Text& from, const Text& to) {
        for (RowsBox* rows : {&objects_, &types_, &eventCodes_}) rows->FollowRename(from, to);
    };
}

RowsBox::Needs SetupEditors::RowsNeeds() {
    return {.files = needs_.files,
            .dialogs = dialogs_,
            .captions = needs_.captions,
            .state = needs_.state,
            .host = host_};
}

}  // namespace nordkeep
