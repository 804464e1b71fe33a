#pragma once

#include "console/window/StatusTexts.h"

#include <QtWidgets/QWidget>

#include <functional>
#include <vector>

namespace nordkeep {

/// The banners above the lists, one below the other; nothing closes them but their cause's end.
class BannerPane final : public QWidget {
 public:
    explicit BannerPane(QWidget* parent = nullptr) : QWidget(parent) { hide(); }
    void Show(std::vector<Banner> banners);
    /// What a click, or Enter, on a banner that opens the findings does.
    void OnFindings(std::function<void()> open) { openFindings_ = std::move(open); }
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return {0, sizeHint().height()}; }

 protected:
    void paintEvent(QPaintEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

 private:
    int BannerHeight() const;
    bool OpensFindings(int y) const;
    bool HasFindings() const;

    std::vector<Banner> banners_{};
    std::function<void()> openFindings_{};
};

}  // namespace nordkeep
