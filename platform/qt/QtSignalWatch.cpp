#include "platform/qt/QtSignalWatch.h"

#include <QtCore/QSocketNotifier>

namespace nordkeep {

QtSignalWatch::QtSignalWatch(Signals& caught, std::function<void()> onSignal)
    : notifier_(std::make_unique<QSocketNotifier>(caught.Descriptor(), QSocketNotifier::Read)) {
    const auto take = [&caught, onSignal = std::move(onSignal)] {
        if (caught.Take()) onSignal();
    };
    QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(), take);
}

QtSignalWatch::~QtSignalWatch() = default;

}  // namespace nordkeep
