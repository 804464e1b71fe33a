#include "console/views/print/PreviewWindow.h"

#include "console/lists/SharedCaptions.h"

#include <QtGui/QPaintEvent>
#include <QtGui/QPainter>
#include <QtWidgets/QBoxLayout>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QScrollArea>

namespace nordkeep {
namespace {

constexpr int kCaptionTitle = 3710;
constexpr int kCaptionSavePdf = 3712;
constexpr int kGap = 16;         // px between pages
constexpr int kPageWidth = 760;  // px

}  // namespace

/// All pages below each other; only those in sight are painted.
class PreviewWindow::Pages final : public QWidget {
 public:
    explicit Pages(PageLayout layout) : layout_(std::move(layout)) {
        setFixedSize(kPageWidth + 2 * kGap, kGap + layout_.PageCount() * (PageHeight() + kGap));
    }

 protected:
    void paintEvent(QPaintEvent* event) override {
        QPainter painter(this);
        painter.setRenderHint(QPainter::TextAntialiasing);
        for (int page = 0; page < layout_.PageCount(); ++page) {
            const QRect place(kGap, kGap + page * (PageHeight() + kGap), kPageWidth, PageHeight());
            if (!place.intersects(event->rect())) continue;
            painter.save();
            painter.fillRect(place, Qt::white);
            painter.setClipRect(place);
            painter.translate(place.topLeft());
            const qreal scale = kPageWidth / layout_.PageSize().width();
            painter.scale(scale, scale);
            layout_.Paint(painter, page);
            painter.restore();
        }
    }

 private:
    int PageHeight() const {
        return qRound(kPageWidth / layout_.PageSize().width() * layout_.PageSize().height());
    }

    PageLayout layout_;
};

PreviewWindow::PreviewWindow(PageLayout layout, const Captions& captions, QWidget* parent) : QDialog(parent) {
    setModal(false);
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    setWindowTitle(PlainCaption(captions, kCaptionTitle));
    auto* scroll = new QScrollArea;
    scroll->setWidget(new Pages(std::move(layout)));
    scroll->setAlignment(Qt::AlignHCenter);
    scroll->setBackgroundRole(QPalette::Dark);
    notice_ = new NoticeBar;
    auto* print = NewButton(captions, kCaptionPrint);
    auto* save = NewButton(captions, kCaptionSavePdf);
    auto* close = NewButton(captions, kCaptionClose);
    print->setDefault(true);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    for (QPushButton* button : {print, save, close}) buttons->addWidget(button);
    auto* all = new QVBoxLayout(this);
    all->addWidget(scroll, 1);
    all->addWidget(notice_);
    all->addLayout(buttons);
    connect(print, &QPushButton::clicked, this, [this] {
        if (onPrint) onPrint();
    });
    connect(save, &QPushButton::clicked, this, [this] { AskForFile(); });
    connect(close, &QPushButton::clicked, this, &QDialog::close);
    resize(860, 760);
}

void PreviewWindow::AskForFile() {
    auto* dialog = new QFileDialog(this, windowTitle(), {}, QStringLiteral("PDF (*.pdf)"));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setDefaultSuffix(QStringLiteral("pdf"));
    connect(dialog, &QFileDialog::fileSelected, this, [this](const QString& path) {
        if (onSave) onSave(path);
    });
    dialog->open();
}

}  // namespace nordkeep
