#include "console/views/boxes/PictureWindow.h"

#include <QtGui/QCloseEvent>
#include <QtGui/QPainter>

namespace nordkeep {
namespace {

constexpr int kCaptionTitle = 3708;
constexpr int kMargin = 12;
constexpr int kCaptionSize = 18;  // points

}  // namespace

PictureWindow::PictureWindow(PictureBox& picture, const Captions& captions, QWidget* parent)
    : QWidget(parent, Qt::Tool | Qt::WindowStaysOnTopHint | Qt::WindowCloseButtonHint), picture_(picture) {
    setAttribute(Qt::WA_ShowWithoutActivating);
    setWindowTitle(PlainCaption(captions, kCaptionTitle));
    resize(480, 360);
}

void PictureWindow::Show(OpenedBy) {
    Refresh();
    // Where it hides neither menus nor buttons nor the upper rows of a list.
    PutRight(*this, Qt::BottomEdge);
    BringToFront(*this, false);
}

void PictureWindow::Refresh() {
    if (shownGeneration_ != picture_.Generation()) {
        shownGeneration_ = picture_.Generation();
        const Text& bytes = picture_.Picture();
        image_ =
            QImage::fromData(reinterpret_cast<const uchar*>(bytes.data()), static_cast<int>(bytes.size()));
    }
    setAccessibleName(ShownLine(picture_.Caption()));
    update();
}

void PictureWindow::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), QColor(0x20, 0x20, 0x20));
    QFont font = this->font();
    font.setPointSize(kCaptionSize);
    font.setBold(true);
    painter.setFont(font);
    painter.setPen(Qt::white);
    QRect room = rect().adjusted(kMargin, kMargin, -kMargin, -kMargin);
    const QString caption = ShownLine(picture_.Caption());
    const QRect words =
        painter.boundingRect(room, Qt::AlignHCenter | Qt::AlignTop | Qt::TextWordWrap, caption);
    painter.drawText(room, Qt::AlignHCenter | Qt::AlignTop | Qt::TextWordWrap, caption);
    room.setTop(words.bottom() + kMargin);
    if (!image_.isNull() && room.isValid()) {
        QRect place(QPoint(), image_.size().scaled(room.size(), Qt::KeepAspectRatio));
        place.moveCenter(room.center());
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.drawImage(place, image_);
    } else {
        painter.setFont(this->font());
        painter.drawText(room, Qt::AlignCenter | Qt::TextWordWrap, ShownLine(picture_.Failure()));
    }
}

void PictureWindow::mousePressEvent(QMouseEvent*) {
    picture_.Close();
}

void PictureWindow::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape) return picture_.Close();
    QWidget::keyPressEvent(event);
}

void PictureWindow::closeEvent(QCloseEvent* event) {
    event->ignore();
    picture_.Close();
}

}  // namespace nordkeep
