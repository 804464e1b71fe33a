#include "console/views/window/EdgeStrip.h"

#include "console/views/lists/ViewParts.h"

#include <QtCore/QEvent>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QToolButton>

namespace nordkeep {
namespace {

constexpr int kPadding = 8;

QToolButton* NewOffer() {
    auto* button = new QToolButton;
    button->setToolButtonStyle(Qt::ToolButtonTextOnly);
    button->setAutoRaise(false);
    button->setFocusPolicy(Qt::TabFocus);
    button->hide();
    return button;
}

void SetOffer(QToolButton& button, const QString& text) {
    if (button.text() != text) button.setText(text);
    button.setVisible(!text.isEmpty());
}

}  // namespace

EdgeStrip::EdgeStrip(QWidget* parent) : QWidget(parent) {
    news_ = NewOffer();
    undo_ = NewOffer();
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 1, 0, 1);
    layout->addStretch(1);
    layout->addWidget(news_);
    layout->addStretch(1);
    layout->addWidget(undo_);
    connect(news_, &QToolButton::clicked, this, [this] { onNews(); });
    connect(undo_, &QToolButton::clicked, this, [this] { onUndo(); });
    FitHeight();
    ColorNews();
}

void EdgeStrip::FitHeight() {
    setFixedHeight(fontMetrics().height() + kPadding + 2);
}

void EdgeStrip::ColorNews() {
    QFont bold = font();
    bold.setBold(true);
    news_->setFont(bold);
    QPalette colors = palette();
    const QColor ink = WarningColor(colors);
    if (colors.color(QPalette::ButtonText) != ink) colors.setColor(QPalette::ButtonText, ink);
    news_->setPalette(colors);
}

void EdgeStrip::Show(const QString& news, const QString& undo) {
    SetOffer(*news_, news);
    SetOffer(*undo_, undo);
}

void EdgeStrip::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange) FitHeight();
    if (event->type() == QEvent::FontChange || event->type() == QEvent::PaletteChange) ColorNews();
}

}  // namespace nordkeep
