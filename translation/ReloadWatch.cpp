#include "translation/ReloadWatch.h"

#include <algorithm>

namespace nordkeep {
namespace {

constexpr std::int64_t kShortestPeriodSeconds = 5;

}  // namespace

bool ReloadWatch::Tick(int elapsedMs) {
    if (settings_.AutoReloadTranslations < 1) return false;
    elapsedMs_ += elapsedMs;
    const std::int64_t seconds =
        std::max<std::int64_t>(settings_.AutoReloadTranslations, kShortestPeriodSeconds);
    if (elapsedMs_ <= seconds * 1000) return false;
    elapsedMs_ = 0;
    const bool haveFilesChanged = translations_.HaveFilesChanged();
    if (settings_.AutoExchangeServiceInfo) {
        for (const auto& set : translations_.Sets()) periods_.TakeIn(*set);
    }
    return haveFilesChanged;
}

}  // namespace nordkeep
