#pragma once

#include "console/boxes/PictureBox.h"
#include "console/views/lists/ViewParts.h"

#include <QtGui/QImage>

namespace nordkeep {

/// The window of the alarm picture: on top of everything, and never with the focus of who types elsewhere.
class PictureWindow final : public QWidget, public WindowView {
 public:
    PictureWindow(PictureBox& picture, const Captions& captions, QWidget* parent = nullptr);

    void Show(OpenedBy by) override;
    void Refresh() override;
    void Close() override { hide(); }

 protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

 private:
    PictureBox& picture_;
    QImage image_{};
    unsigned shownGeneration_ = 0;
};

}  // namespace nordkeep
