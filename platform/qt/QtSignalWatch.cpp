#include "platform/qt/QtSignalWatch.h"

#include <QtCore/QSocketNotifier>

namespace nordkeep {

QtSignalWatch::QtSignalWatch(Signals& signals, std::function<void()> onSignal)
    : notifier_(std::make_unique<QSocketNotifier>(signals.Descriptor(), QSocketNotifier::Read)) {
    const auto take = [&signals, onSignal = std::move(onSignal)] {
        if (signals.Take()) onSignal();
    };
    QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(), take);
}

QtSignalWatch::~QtSignalWatch() = default;

}  // namespace nordkeep
