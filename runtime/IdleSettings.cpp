#include "runtime/IdleSettings.h"

namespace nordkeep {
namespace {

using I = IdleSettings;
constexpr int kLowest = -32768;
constexpr int kHighest = 32767;

constexpr SettingRow<I> kRows[] = {
    {"General", "AliveTestTypeReset", SettingScope::Centre, &I::AliveTestTypeReset, kLowest, kHighest},
    {"General", "AllowEdit", SettingScope::Workstation, &I::AllowEdit},
};

}  // namespace

std::span<const SettingRow<IdleSettings>> IdleSettingRows() {
    return kRows;
}

}  // namespace nordkeep
