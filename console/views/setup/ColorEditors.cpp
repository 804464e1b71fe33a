#include "console/setup/FieldCheck.h"
#include "console/views/lists/Icons.h"
#include "console/views/setup/FieldEditors.h"
#include "platform/qt/QtText.h"

#include <QtGui/QPixmap>
#include <QtWidgets/QBoxLayout>
#include <QtWidgets/QColorDialog>
#include <QtWidgets/QLineEdit>

namespace nordkeep {
namespace {

constexpr int kCaptionReadable = 3876;
constexpr int kCaptionUnreadable = 3877;
constexpr int kCaptionBrowse = 3888;
constexpr int kCaptionBackground = 3889;
constexpr int kCaptionText = 3890;
constexpr int kSwatch = 16;        // px
constexpr int kValueLetters = 19;  // of the line that shows the value

Rgb RgbOf(const QColor& color) {
    const auto part = [](int value) { return static_cast<std::uint8_t>(value); };
    return {part(color.red()), part(color.green()), part(color.blue())};
}

void ShowSwatch(QPushButton& button, const std::optional<Rgb>& color) {
    QPixmap swatch(kSwatch, kSwatch);
    swatch.fill(color ? ToQColor(*color) : QColor(Qt::transparent));
    button.setIcon(swatch);
}

/// The value as a text, which can be typed, and buttons that choose its colours.
class ColorLine : public FieldEditor {
 public:
    ColorLine() : row_(new QHBoxLayout(this)), line_(new QLineEdit) {
        row_->setContentsMargins(0, 0, 0, 0);
        line_->setFixedWidth(line_->fontMetrics().averageCharWidth() * kValueLetters);
        row_->addWidget(line_);
        connect(line_, &QLineEdit::textEdited, this, [this](const QString& text) {
            ShowColors(FromQString(text));
            onEdit(FromQString(text));
        });
    }
    void ShowValue(const Text& value) override {
        if (line_->text() != ToQString(value)) line_->setText(ToQString(value));
        ShowColors(value);
    }
    QWidget* Input() override { return line_; }

 protected:
    virtual void ShowColors(const Text& value) = 0;
    void Put(const Text& value) {
        ShowValue(value);
        onEdit(value);
    }
    Text Value() const { return FromQString(line_->text()); }
    /// Asks for a colour; nothing waits for the answer.
    void Choose(const QColor& now, std::function<void(Rgb)> chosen) {
        auto* dialog = new QColorDialog(now, this);
        dialog->setAttribute(Qt::WA_DeleteOnClose);
        connect(dialog, &QColorDialog::colorSelected, this,
                [chosen = std::move(chosen)](const QColor& color) { chosen(RgbOf(color)); });
        dialog->open();
    }
    QHBoxLayout* row_;
    QLineEdit* line_;
};

class ColorEditor final : public ColorLine {
 public:
    explicit ColorEditor(const Captions& captions) : button_(NewButton(captions, kCaptionBrowse)) {
        row_->addWidget(button_);
        row_->addStretch(1);
        connect(button_, &QPushButton::clicked, this, [this] {
            const auto now = ParseColorNumber(Value());
            Choose(now ? ToQColor(*now) : QColor(Qt::white), [this](Rgb color) { Put(ColorNumber(color)); });
        });
    }

 private:
    void ShowColors(const Text& value) override { ShowSwatch(*button_, ParseColorNumber(value)); }
    QPushButton* button_;
};

class ColorPairEditor final : public ColorLine {
 public:
    explicit ColorPairEditor(const Captions& captions)
        : captions_(captions),
          background_(NewButton(captions, kCaptionBackground)),
          text_(NewButton(captions, kCaptionText)),
          sample_(NewDataLabel()) {
        for (QPushButton* button : {background_, text_}) row_->addWidget(button);
        sample_->setContentsMargins(8, 2, 8, 2);
        sample_->setAutoFillBackground(true);
        row_->addWidget(sample_, 1);
        connect(background_, &QPushButton::clicked, this, [this] { ChoosePart(true); });
        connect(text_, &QPushButton::clicked, this, [this] { ChoosePart(false); });
    }

 private:
    void ShowColors(const Text& value) override {
        const CellColors pair = ColorsOfPair(value);
        ShowSwatch(*background_, pair.background);
        ShowSwatch(*text_, pair.text);
        sample_->setVisible(pair.background && pair.text);
        if (!pair.background || !pair.text) return;
        const double contrast = Contrast(*pair.background, *pair.text);
        const int caption = contrast < kLeastContrast ? kCaptionUnreadable : kCaptionReadable;
        sample_->setText(ShownLine(captions_(caption, {ContrastText(contrast)})));
        QPalette colors = palette();
        colors.setColor(QPalette::Window, ToQColor(*pair.background));
        colors.setColor(QPalette::WindowText, ToQColor(*pair.text));
        sample_->setPalette(colors);
    }
    void ChoosePart(bool isBackground) {
        const CellColors pair = ColorsOfPair(Value());
        const auto now = isBackground ? pair.background : pair.text;
        const Rgb other =
            isBackground ? pair.text.value_or(Rgb{0, 0, 0}) : pair.background.value_or(Rgb{255, 255, 255});
        Choose(now ? ToQColor(*now) : QColor(Qt::white), [this, isBackground, other](Rgb color) {
            Put(PairText(isBackground ? CellColors{color, other} : CellColors{other, color}));
        });
    }

    const Captions& captions_;
    QPushButton* background_;
    QPushButton* text_;
    QLabel* sample_;
};

}  // namespace

FieldEditor* NewColorEditor(const Captions& captions) {
    return new ColorEditor(captions);
}

FieldEditor* NewColorPairEditor(const Captions& captions) {
    return new ColorPairEditor(captions);
}

}  // namespace nordkeep
