#include "console/views/editors/RowEditors.h"

#include "platform/qt/QtText.h"

#include <QtCore/QSignalBlocker>
#include <QtCore/QStringListModel>
#include <QtGui/QFocusEvent>
#include <QtWidgets/QBoxLayout>
#include <QtWidgets/QCompleter>
#include <QtWidgets/QLineEdit>

namespace nordkeep {
namespace {

/// Asks for its suggestions when somebody comes to it: they are the other rows, which may be many.
class SuggestingLine final : public QLineEdit {
 public:
    std::function<QStringList()> suggestions = [] { return QStringList(); };

 protected:
    void focusInEvent(QFocusEvent* event) override {
        auto* completer = new QCompleter(suggestions(), this);
        completer->setCaseSensitivity(Qt::CaseInsensitive);
        completer->setFilterMode(Qt::MatchContains);
        connect(completer, qOverload<const QString&>(&QCompleter::activated), this,
                [this](const QString& text) { textEdited(text); });
        setCompleter(completer);
        QLineEdit::focusInEvent(event);
    }
};

/// A text, with the values that other rows have as suggestions.
class PickEditor final : public FieldEditor {
 public:
    explicit PickEditor(const EditorNeeds& needs) {
        auto* layout = new QHBoxLayout(this);
        layout->setContentsMargins(0, 0, 0, 0);
        layout->addWidget(line_);
        FieldForm& form = needs.form;
        line_->suggestions = [&form, field = needs.field] {
            QStringList words;
            for (const DescribedChoice& choice : form.ChoicesOf(form.Fields()[field]))
                words << ToQString(choice.value);
            return words;
        };
        connect(line_, &QLineEdit::textEdited, this,
                [this](const QString& text) { onEdit(FromQString(text)); });
    }
    void ShowValue(const Text& value) override {
        const QString text = ToQString(value);
        if (line_->text() != text) line_->setText(text);
    }
    QWidget* Input() override { return line_; }

 private:
    SuggestingLine* line_ = new SuggestingLine;
};

/// A text of several lines. Tab leaves it.
class LinesEditor final : public FieldEditor {
 public:
    LinesEditor() {
        auto* layout = new QHBoxLayout(this);
        layout->setContentsMargins(0, 0, 0, 0);
        layout->addWidget(box_);
        box_->setTabChangesFocus(true);
        box_->setFixedHeight(kShownLines * box_->fontMetrics().lineSpacing() + kFrame);
        connect(box_, &QPlainTextEdit::textChanged, this, [this] { onEdit(TypedText(box_->toPlainText())); });
    }
    void ShowValue(const Text& value) override {
        if (TypedText(box_->toPlainText()) == value) return;
        const QSignalBlocker silence(box_);
        box_->setPlainText(ShownText(value));
    }
    QWidget* Input() override { return box_; }

 private:
    static constexpr int kShownLines = 5;
    static constexpr int kFrame = 14;  // px
    QPlainTextEdit* box_ = new QPlainTextEdit;
};

}  // namespace

FieldEditor* NewPickEditor(const EditorNeeds& needs) {
    return new PickEditor(needs);
}

FieldEditor* NewRowEditor(const EditorNeeds& needs) {
    switch (needs.form.Fields()[needs.field].key.control) {
        case ControlKind::Pick:
            return NewPickEditor(needs);
        case ControlKind::Lines:
            return new LinesEditor;
        case ControlKind::MapPlace:
            return NewMapPlaceEditor(needs);
        case ControlKind::Schedule:
            return NewScheduleEditor(needs);
        default:
            return NewFieldEditor(needs);
    }
}

}  // namespace nordkeep
