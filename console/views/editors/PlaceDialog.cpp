#include "console/views/editors/PlaceDialog.h"

#include "console/lists/SharedCaptions.h"
#include "console/views/lists/ViewParts.h"

#include <QtGui/QKeyEvent>
#include <QtGui/QMouseEvent>
#include <QtGui/QPainter>
#include <QtWidgets/QBoxLayout>
#include <QtWidgets/QScrollArea>

#include <algorithm>

namespace nordkeep {

namespace {

constexpr int kCaptionTitle = 4824;
constexpr int kCaptionHelp = 4825;
constexpr int kCaptionTake = 4826;
constexpr int kCaptionNoMap = 4827;
constexpr int kArm = 12;     // px, of the cross
constexpr int kFar = 10;     // px of the picture, with Shift
constexpr int kAround = 40;  // px that are to be in sight around the cross

}  // namespace

/// The scaled picture with the cross.
class PlaceCanvas final : public QWidget {
 public:
    std::function<void(MapPoint)> onClick = [](MapPoint) {};

    void Show(const QPixmap& picture, MapSize size, MapPoint cross) {
        picture_ = picture;
        cross_ = cross;
        setFixedSize(size.width, size.height);
        update();
    }

 protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.drawPixmap(rect(), picture_);
        // Two strokes, so that it is seen on any ground.
        for (const auto& [color, width] : {std::pair{Qt::white, 5}, std::pair{Qt::red, 2}}) {
            painter.setPen(QPen(color, width));
            painter.drawLine(cross_.x - kArm, cross_.y, cross_.x + kArm, cross_.y);
            painter.drawLine(cross_.x, cross_.y - kArm, cross_.x, cross_.y + kArm);
        }
    }
    void mousePressEvent(QMouseEvent* event) override { onClick({event->pos().x(), event->pos().y()}); }

 private:
    QPixmap picture_{};
    MapPoint cross_{};
};

PlaceDialog::PlaceDialog(const Text& picture, std::optional<MapPoint> place, const Captions& captions,
                         QWidget* parent)
    : QDialog(parent) {
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(PlainCaption(captions, kCaptionTitle));
    picture_.loadFromData(reinterpret_cast<const uchar*>(picture.data()),
                          static_cast<unsigned>(picture.size()));
    place_ = place.value_or(MapPoint{picture_.width() / 2, picture_.height() / 2});
    canvas_ = new PlaceCanvas;
    canvas_->onClick = [this](MapPoint at) {
        place_ = PlaceUnder(at, zoom_);
        Move(0, 0);
    };
    area_ = new QScrollArea;
    area_->setWidget(canvas_);
    area_->setFocusPolicy(Qt::NoFocus);
    QPushButton* take = NewButton(captions, kCaptionTake);
    take->setAutoDefault(false);
    QPushButton* back = NewButton(captions, kCaptionBack);
    back->setAutoDefault(false);
    auto* buttons = new QHBoxLayout;
    const bool hasPicture = !picture_.isNull();
    take->setEnabled(hasPicture);
    buttons->addWidget(NewDataLabel(CaptionText(captions, hasPicture ? kCaptionHelp : kCaptionNoMap)), 1);
    buttons->addWidget(take);
    buttons->addWidget(back);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(area_, 1);
    layout->addLayout(buttons);
    connect(take, &QPushButton::clicked, this, [this] { Take(); });
    connect(back, &QPushButton::clicked, this, [this] { reject(); });
    resize(900, 640);
    ShowCross();
    setFocusPolicy(Qt::StrongFocus);
}

void PlaceDialog::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    setFocus();
    Move(0, 0);
}

void PlaceDialog::ShowCross() {
    const MapSize size = ScaledSize({picture_.width(), picture_.height()}, zoom_);
    canvas_->Show(picture_, size, ScaledPlace(place_, zoom_));
}

void PlaceDialog::Zoom(int percent) {
    zoom_ = LimitZoom(percent);
    Move(0, 0);
}

void PlaceDialog::Move(int x, int y) {
    place_.x = std::clamp(place_.x + x, 0, std::max(picture_.width() - 1, 0));
    place_.y = std::clamp(place_.y + y, 0, std::max(picture_.height() - 1, 0));
    ShowCross();
    const MapPoint at = ScaledPlace(place_, zoom_);
    area_->ensureVisible(at.x, at.y, kAround, kAround);
}

void PlaceDialog::Take() {
    if (!picture_.isNull()) onTake(place_);
    accept();
}

void PlaceDialog::keyPressEvent(QKeyEvent* event) {
    const int step = (event->modifiers() & Qt::ShiftModifier) ? kFar : 1;
    switch (event->key()) {
        case Qt::Key_Left:
            return Move(-step, 0);
        case Qt::Key_Right:
            return Move(step, 0);
        case Qt::Key_Up:
            return Move(0, -step);
        case Qt::Key_Down:
            return Move(0, step);
        case Qt::Key_Plus:
            return Zoom(zoom_ + kZoomStep);
        case Qt::Key_Minus:
            return Zoom(zoom_ - kZoomStep);
        case Qt::Key_Return:
        case Qt::Key_Enter:
            return Take();
        default:
            QDialog::keyPressEvent(event);
    }
}

}  // namespace nordkeep
