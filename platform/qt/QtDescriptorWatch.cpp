#include "platform/qt/QtDescriptorWatch.h"

#include <QtCore/QSocketNotifier>

#include <utility>

namespace nordkeep {
namespace {

class QtDescriptorWatch final : public DescriptorWatch {
 public:
    QtDescriptorWatch(int descriptor, QSocketNotifier::Type type, std::function<void()> onReady)
        : notifier_(new QSocketNotifier(descriptor, type)) {
        QObject::connect(notifier_, &QSocketNotifier::activated, notifier_,
                         [onReady = std::move(onReady)] { onReady(); });
    }
    // Its own handler may be what lets it go.
    ~QtDescriptorWatch() override {
        notifier_->setEnabled(false);
        notifier_->deleteLater();
    }
    QtDescriptorWatch(const QtDescriptorWatch&) = delete;
    QtDescriptorWatch& operator=(const QtDescriptorWatch&) = delete;
    void SetOn(bool isOn) override { notifier_->setEnabled(isOn); }

 private:
    QSocketNotifier* notifier_;
};

}  // namespace

std::unique_ptr<DescriptorWatch> QtDescriptorWatches::Watch(int descriptor, Readiness readiness,
                                                            std::function<void()> onReady) {
    const auto type = readiness == Readiness::Read ? QSocketNotifier::Read : QSocketNotifier::Write;
    return std::make_unique<QtDescriptorWatch>(descriptor, type, std::move(onReady));
}

}  // namespace nordkeep
