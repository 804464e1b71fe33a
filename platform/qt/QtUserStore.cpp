#include "platform/qt/QtUserStore.h"

#include <QtCore/QSettings>
#include <QtCore/QVariant>

namespace nordkeep {
namespace {

const QString kProgram = QStringLiteral("Nordkeep");

QString PlaceOf(const Text& key) {
    return QStringLiteral("Settings/") + QString::fromStdString(ToUtf8(key));
}

}  // namespace

std::optional<int> QtUserStore::Read(const Text& key) const {
    bool isNumber = false;
    const int value = QSettings(kProgram, kProgram).value(PlaceOf(key)).toInt(&isNumber);
    return isNumber ? std::optional<int>(value) : std::nullopt;
}

void QtUserStore::Write(const Text& key, int value) {
    QSettings(kProgram, kProgram).setValue(PlaceOf(key), value);
}

}  // namespace nordkeep
