#include "console/boxes/CommentSettings.h"

namespace nordkeep {
namespace {

constexpr const char* kGeneral = "General";
using Row = SettingRow<CommentSettings>;

constexpr Row kRows[] = {
    kSmallCommentRow<CommentSettings>,
    {kGeneral, "ViewDynamicFormInAlarmComment", SettingScope::Workstation,
     &CommentSettings::ViewDynamicFormInAlarmComment},
    {kGeneral, "ManualTransmission", SettingScope::Centre, &CommentSettings::ManualTransmission},
    {kGeneral, "ManualTransmissionFormat", SettingScope::Centre, &CommentSettings::ManualTransmissionFormat},
};

}  // namespace

std::span<const SettingRow<CommentSettings>> CommentSettingRows() {
    return kRows;
}

}  // namespace nordkeep
