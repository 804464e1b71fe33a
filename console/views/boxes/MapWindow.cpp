#include "console/views/boxes/MapWindow.h"

#include "console/lists/SharedCaptions.h"
#include "platform/qt/QtText.h"

#include <QtCore/QBuffer>
#include <QtGui/QCloseEvent>
#include <QtGui/QImageReader>
#include <QtGui/QPainter>
#include <QtGui/QPixmap>
#include <QtWidgets/QBoxLayout>
#include <QtWidgets/QScrollArea>
#include <QtWidgets/QScrollBar>

namespace nordkeep {
namespace {

constexpr int kCaptionZoomIn = 3705;
constexpr int kCaptionZoomOut = 3706;
constexpr int kCaptionCenter = 3707;
constexpr int kCrossArm = 40;   // px
constexpr int kCrossWidth = 3;  // px
constexpr int kCrossEdge = 1;   // px, on either side
constexpr int kScrollStep = 40;
constexpr int kMostMegabytes = 512;  // of one decoded map

QImage DecodedPicture(const Text& bytes) {
    QByteArray data = QByteArray::fromRawData(bytes.data(), static_cast<qsizetype>(bytes.size()));
    QBuffer buffer(&data);
    QImageReader reader(&buffer);
    reader.setAllocationLimit(kMostMegabytes);
    return reader.read();
}

}  // namespace

/// The scaled picture with the cross.
class MapWindow::Canvas final : public QWidget {
 public:
    explicit Canvas(MapBox& map) : map_(map) { setMouseTracking(true); }

    void SetPicture(QImage picture) {
        picture_ = QPixmap::fromImage(std::move(picture));
        Rescale();
    }
    void Rescale() {
        const MapSize size = ScaledSize({picture_.width(), picture_.height()}, map_.Zoom());
        resize(size.width, size.height);
        update();
    }
    /// The cross alone has changed.
    void UpdateCross() {
        if (map_.Place()) update(CrossArea());
    }

 protected:
    void paintEvent(QPaintEvent* event) override {
        QPainter painter(this);
        painter.setClipRegion(event->region());
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.drawPixmap(rect(), picture_);
        if (!map_.Place()) return;
        const MapPoint at = ScaledPlace(*map_.Place(), map_.Zoom());
        // Its edge keeps the white half of the flash in sight on a light picture.
        PaintCross(painter, at, QPen(Qt::black, kCrossWidth + 2 * kCrossEdge, Qt::SolidLine, Qt::SquareCap));
        PaintCross(painter, at, QPen(map_.IsFlashWhite() ? Qt::white : QColor(255, 0, 0), kCrossWidth));
    }

 private:
    static void PaintCross(QPainter& painter, const MapPoint& at, const QPen& pen) {
        painter.setPen(pen);
        painter.drawLine(at.x - kCrossArm, at.y, at.x + kCrossArm, at.y);
        painter.drawLine(at.x, at.y - kCrossArm, at.x, at.y + kCrossArm);
    }

    QRect CrossArea() const {
        const MapPoint at = ScaledPlace(*map_.Place(), map_.Zoom());
        const int reach = kCrossArm + kCrossWidth + kCrossEdge;
        return {at.x - reach, at.y - reach, 2 * reach, 2 * reach};
    }

    MapBox& map_;
    QPixmap picture_{};
};

MapWindow::MapWindow(MapBox& map, const Captions& captions, QWidget* parent) : QDialog(parent), map_(map) {
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    setModal(false);
    canvas_ = new Canvas(map);
    canvas_->installEventFilter(this);
    canvas_->setFocusPolicy(Qt::StrongFocus);
    scroll_ = new QScrollArea;
    scroll_->setWidget(canvas_);
    scroll_->setAlignment(Qt::AlignCenter);
    scroll_->setFocusPolicy(Qt::NoFocus);
    failure_ = NewLabel();
    failure_->setAlignment(Qt::AlignCenter);
    failure_->setWordWrap(true);
    status_ = NewDataLabel();
    other_ = new NoticeBar;
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(other_);
    layout->addWidget(scroll_, 1);
    layout->addWidget(failure_, 1);
    layout->addWidget(status_);
    layout->addLayout(NewButtons(captions));
    resize(720, 560);
}

QLayout* MapWindow::NewButtons(const Captions& captions) {
    auto* row = new QHBoxLayout;
    auto* in = NewButton(captions, kCaptionZoomIn);
    auto* out = NewButton(captions, kCaptionZoomOut);
    center_ = NewButton(captions, kCaptionCenter);
    auto* close = NewButton(captions, kCaptionClose);
    connect(in, &QPushButton::clicked, this, [this] { Zoom('+'); });
    connect(out, &QPushButton::clicked, this, [this] { Zoom('-'); });
    connect(center_, &QPushButton::clicked, this, [this] { FindAlarmCenter(); });
    connect(close, &QPushButton::clicked, this, [this] { map_.Close(); });
    row->addStretch(1);
    for (QPushButton* button : {in, out, center_, close}) row->addWidget(button);
    return row;
}

void MapWindow::Show(OpenedBy by) {
    setWindowTitle(ShownLine(map_.Title()));
    canvas_->setAccessibleName(windowTitle());
    if (shownGeneration_ != map_.Generation()) LoadPicture();
    // Beside the sheet, which often opens with it.
    PutRight(*this, Qt::TopEdge);
    BringToFront(*this, by == OpenedBy::Operator);
    Refresh();
    FindAlarmCenter();
    canvas_->setFocus();
}

void MapWindow::LoadPicture() {
    shownGeneration_ = map_.Generation();
    const QImage picture = DecodedPicture(map_.Picture());
    map_.SetPictureSize({picture.width(), picture.height()});
    canvas_->SetPicture(picture);
    failure_->setText(ShownLine(map_.Failure()));
    failure_->setVisible(picture.isNull());
    scroll_->setVisible(!picture.isNull());
}

void MapWindow::Refresh() {
    const MapSize scaled = ScaledSize(map_.PictureSize(), map_.Zoom());
    if (canvas_->size() != QSize(scaled.width, scaled.height)) canvas_->Rescale();
    canvas_->UpdateCross();
    status_->setText(ShownLine(map_.StatusText()));
    center_->setEnabled(map_.Place().has_value());
    if (const QString said = ShownLine(map_.OtherCurrent()); said != shownOther_) {
        shownOther_ = said;
        other_->SetNotice(said);
    }
}

void MapWindow::FindAlarmCenter() {
    const auto to = map_.FindAlarmCenter({scroll_->viewport()->width(), scroll_->viewport()->height()});
    if (!to) return;
    scroll_->horizontalScrollBar()->setValue(to->x);
    scroll_->verticalScrollBar()->setValue(to->y);
}

void MapWindow::Zoom(char key) {
    map_.AdjustZoom(key);
    FindAlarmCenter();
}

void MapWindow::ScrollBy(int x, int y) {
    QScrollBar* across = scroll_->horizontalScrollBar();
    QScrollBar* down = scroll_->verticalScrollBar();
    across->setValue(across->value() + x);
    down->setValue(down->value() + y);
}

void MapWindow::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
        case Qt::Key_Plus:
            return Zoom('+');
        case Qt::Key_Minus:
            return Zoom('-');
        case Qt::Key_Left:
            return ScrollBy(-kScrollStep, 0);
        case Qt::Key_Right:
            return ScrollBy(kScrollStep, 0);
        case Qt::Key_Up:
            return ScrollBy(0, -kScrollStep);
        case Qt::Key_Down:
            return ScrollBy(0, kScrollStep);
        case Qt::Key_Home:
            return FindAlarmCenter();
        default:
            QDialog::keyPressEvent(event);
    }
}

bool MapWindow::eventFilter(QObject* watched, QEvent* event) {
    if (watched != canvas_) return QDialog::eventFilter(watched, event);
    switch (event->type()) {
        case QEvent::MouseButtonPress:
            draggedFrom_ = static_cast<QMouseEvent*>(event)->globalPosition().toPoint();
            return true;
        case QEvent::MouseMove:
            MoveMouse(*static_cast<QMouseEvent*>(event));
            return true;
        case QEvent::Wheel:
            return TurnWheel(*static_cast<QWheelEvent*>(event));
        default:
            return QDialog::eventFilter(watched, event);
    }
}

// With a button down the map is dragged.
void MapWindow::MoveMouse(const QMouseEvent& event) {
    if (event.buttons() & Qt::LeftButton) {
        const QPoint now = event.globalPosition().toPoint();
        ScrollBy(draggedFrom_.x() - now.x(), draggedFrom_.y() - now.y());
        draggedFrom_ = now;
    }
    map_.MoveMouse({static_cast<int>(event.position().x()), static_cast<int>(event.position().y())});
    status_->setText(ShownLine(map_.StatusText()));
}

bool MapWindow::TurnWheel(const QWheelEvent& event) {
    if (!(event.modifiers() & Qt::ControlModifier) || event.angleDelta().y() == 0) return false;
    map_.AdjustZoom(event.angleDelta().y() > 0 ? '+' : '-');
    return true;
}

void MapWindow::closeEvent(QCloseEvent* event) {
    event->ignore();
    map_.Close();
}

}  // namespace nordkeep
