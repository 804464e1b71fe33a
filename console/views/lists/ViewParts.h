#pragma once

#include "console/lists/Captions.h"

#include <QtGui/QColor>
#include <QtGui/QPalette>
#include <QtWidgets/QDialog>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QPushButton>

namespace nordkeep {

// The few parts that all windows of the operator are put together from.

/// A text of the logic as it is shown: line ends are single, and control characters are blanks.
QString ShownText(TextView text);
/// The same on one line.
QString ShownLine(TextView text);
/// What an operator has typed as a text of the logic, with CR LF line ends.
Text TypedText(const QString& text);
/// A button or menu text from data: "&" is an ordinary character.
QString WithoutMnemonics(QString text);

/// A tool tip that shows its text as it is.
QString ToolTipText(const QString& text);
QString CaptionText(const Captions& captions, int number);
/// A caption without its mnemonic mark and its dots, for titles.
QString PlainCaption(const Captions& captions, int number);

/// A label that never takes its text for anything but plain text.
QLabel* NewLabel(const QString& text = {});
/// A label for a text from data, of any length: it takes the width that there is and breaks its lines.
QLabel* NewDataLabel(const QString& text = {});
/// A label in bold over a box, with the box as its buddy.
QLabel* NewHeading(const QString& text, QWidget* buddy = nullptr);
QPushButton* NewButton(const Captions& captions, int number);
QPlainTextEdit* NewReadOnlyBox();
/// Sets the text of a read-only box unless it stands there already, so that a selection and the place stay.
void SetBoxText(QPlainTextEdit& box, const QString& text);

/// Dark or light, taken from the palette, since the platform does not say.
bool IsDark(const QPalette& palette);
/// Red that can be read on the palette's background of text boxes.
QColor WarningColor(const QPalette& palette);

/// A bar with a sign and a text that asks for attention; hidden while it has no text.
class NoticeBar final : public QLabel {
 public:
    explicit NoticeBar(QWidget* parent = nullptr);
    /// With a check mark for what has gone well.
    void SetNotice(const QString& text, bool isGood = false);

 protected:
    void paintEvent(QPaintEvent* event) override;

 private:
    void PaintSign(QPainter& painter, const QRectF& place) const;

    bool isGood_ = false;
};

/// A word in a frame with round ends.
class Chip final : public QLabel {
 public:
    explicit Chip(QWidget* parent = nullptr);

 protected:
    void paintEvent(QPaintEvent* event) override;
};

/// Shows a window in front. One that opens by itself takes no focus from who types elsewhere.
void BringToFront(QWidget& window, bool takesFocus);
/// Puts a window that is shown for the first time to the right edge of the screen, at the top or the bottom.
void PutRight(QWidget& window, Qt::Edge edge);
/// Moves a window that lies off all present screens onto the nearest.
void KeepOnScreen(QWidget& window);

}  // namespace nordkeep
