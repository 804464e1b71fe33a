#include "console/boxes/CommentSettings.h"

namespace nordkeep {
namespace {

constexpr const char* kGeneral = "General";
using Row = SettingRow<CommentSettings>;

constexpr Row kRows[] = {
    {kGeneral, "SmallCommentSize", "0", SettingScope::Centre, &CommentSettings::SmallCommentSize, 0, 128},
    {kGeneral, "ViewDynamicFormInAlarmComment", "0", SettingScope::Workstation,
     &CommentSettings::ViewDynamicFormInAlarmComment},
    {kGeneral, "ManualTransmission", "", SettingScope::Centre, &CommentSettings::ManualTransmission},
    {kGeneral, "ManualTransmissionFormat",
     "[AlarmCodeToStore] [ProtocolType] [TrPrio] [TrTypeCode] [TrIDCode]", SettingScope::Centre,
     &CommentSettings::ManualTransmissionFormat},
};

}  // namespace

std::span<const SettingRow<CommentSettings>> CommentSettingRows() {
    return kRows;
}

}  // namespace nordkeep
