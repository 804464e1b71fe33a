#pragma once

#include "runtime/SettingTable.h"

namespace nordkeep {

/// How the comment sheet is laid out and what it sends.
struct CommentSettings {
    int SmallCommentSize = 0;                    // characters; 0 hides the box
    bool ViewDynamicFormInAlarmComment = false;  // the object information is a file of keys and values
    Text ManualTransmission{};                   // "0" takes the sending to the dispatcher away
    Text ManualTransmissionFormat{};

    bool MaySend() const { return ManualTransmission.empty() || IsTrue(ManualTransmission); }
};

std::span<const SettingRow<CommentSettings>> CommentSettingRows();

}  // namespace nordkeep
