#pragma once

#include "console/window/StatusTexts.h"

#include <QtWidgets/QWidget>

#include <vector>

namespace nordkeep {

/// The banners above the lists, one below the other; nothing closes them but their cause's end.
class BannerPane final : public QWidget {
 public:
    explicit BannerPane(QWidget* parent = nullptr) : QWidget(parent) { hide(); }
    void Show(std::vector<Banner> banners);
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return {0, sizeHint().height()}; }

 protected:
    void paintEvent(QPaintEvent* event) override;

 private:
    int BannerHeight() const;

    std::vector<Banner> banners_{};
};

}  // namespace nordkeep
