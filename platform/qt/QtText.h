#pragma once

#include "platform/Text.h"

#include <QtCore/QString>

namespace nordkeep {

inline QString ToQString(TextView text) {
    return QString::fromStdString(ToUtf8(text));
}
inline Text FromQString(const QString& text) {
    return FromUtf8(text.toStdString());
}

}  // namespace nordkeep
