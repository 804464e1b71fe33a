#pragma once

#include "runtime/SharedSettings.h"

namespace nordkeep {

/// How the comment sheet is laid out and what it sends.
struct CommentSettings : SmallCommentSettings {
    bool ViewDynamicFormInAlarmComment = false;  // the object information is a file of keys and values
    Text ManualTransmission{};                   // "0" takes the sending to the dispatcher away
    Text ManualTransmissionFormat{"[AlarmCodeToStore] [ProtocolType] [TrPrio] [TrTypeCode] [TrIDCode]"};

    bool MaySend() const { return ManualTransmission.empty() || IsTrue(ManualTransmission); }
};

std::span<const SettingRow<CommentSettings>> CommentSettingRows();

}  // namespace nordkeep
