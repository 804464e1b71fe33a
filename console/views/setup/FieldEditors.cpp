#include "console/views/setup/FieldEditors.h"

#include "platform/qt/QtText.h"

#include <QtCore/QProcess>
#include <QtCore/QSignalBlocker>
#include <QtGui/QFontDatabase>
#include <QtGui/QWheelEvent>
#include <QtWidgets/QBoxLayout>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QLineEdit>

#include <algorithm>

namespace nordkeep {
namespace {

constexpr int kCaptionPlay = 3886;
constexpr int kCaptionBrowse = 3888;
constexpr int kNumberWidth = 14;  // letters

QHBoxLayout* NewRow(QWidget* of) {
    auto* layout = new QHBoxLayout(of);
    layout->setContentsMargins(0, 0, 0, 0);
    return layout;
}

/// A text on one line; what stands behind it is added by those that are more.
class LineEditor : public FieldEditor {
 public:
    LineEditor() : row_(NewRow(this)), line_(new QLineEdit) {
        row_->addWidget(line_, 1);
        connect(line_, &QLineEdit::textEdited, this,
                [this](const QString& text) { onEdit(FromQString(text)); });
    }
    void ShowValue(const Text& value) override {
        const QString text = ToQString(value);
        if (line_->text() == text) return;
        line_->setText(text);
        // Of a long one the begin is to be read, not the end.
        if (!line_->hasFocus()) line_->setCursorPosition(0);
    }
    QWidget* Input() override { return line_; }
    void HideText() { line_->setEchoMode(QLineEdit::Password); }
    void MakeNarrow() {
        line_->setMaximumWidth(line_->fontMetrics().averageCharWidth() * kNumberWidth);
        row_->setStretch(0, 0);
        row_->addStretch(1);
    }

 protected:
    void Put(const QString& text) {
        line_->setText(text);
        onEdit(FromQString(text));
    }
    QHBoxLayout* row_;
    QLineEdit* line_;
};

/// A file or folder, which can be looked for. The question stands beside the window and stops nothing.
class FileEditor final : public LineEditor {
 public:
    FileEditor(const Captions& captions, bool isFolder) : isFolder_(isFolder) {
        QPushButton* browse = NewButton(captions, kCaptionBrowse);
        row_->addWidget(browse);
        connect(browse, &QPushButton::clicked, this, [this] { Browse(); });
    }
    void AddPlay(const EditorNeeds& needs) {
        QPushButton* play = NewButton(needs.captions, kCaptionPlay);
        row_->addWidget(play);
        FieldForm& form = needs.form;
        connect(play, &QPushButton::clicked, this, [&form, field = needs.field] { form.Play(field); });
    }

 private:
    void Browse() {
        auto* dialog = new QFileDialog(this);
        dialog->setAttribute(Qt::WA_DeleteOnClose);
        if (isFolder_) dialog->setFileMode(QFileDialog::Directory);
        connect(dialog, &QFileDialog::fileSelected, this, [this](const QString& file) { Put(file); });
        dialog->open();
    }
    bool isFolder_;
};

class ChoiceEditor final : public FieldEditor {
 public:
    explicit ChoiceEditor(const EditorNeeds& needs) : needs_(needs) {
        QHBoxLayout* row = NewRow(this);
        row->addWidget(list_);
        row->addStretch(1);
        connect(list_, &QComboBox::activated, this,
                [this](int at) { onEdit(FromQString(list_->itemData(at).toString())); });
    }
    // A value that is no choice is shown as it is, and stays until another one is chosen.
    void ShowValue(const Text& value) override {
        const QString wanted = ToQString(value);
        Fill();
        int at = list_->findData(wanted);
        if (at < 0) {
            list_->addItem(ShownLine(value), wanted);
            at = list_->count() - 1;
        }
        list_->setCurrentIndex(at);
    }
    QWidget* Input() override { return list_; }

 private:
    /// Which choices there are may go by what was chosen elsewhere.
    void Fill() {
        std::vector<DescribedChoice> choices = needs_.form.ChoicesOf(needs_.form.Fields()[needs_.field]);
        if (isFilled_ &&
            std::ranges::equal(choices, choices_, {}, &DescribedChoice::value, &DescribedChoice::value))
            return;
        isFilled_ = true;
        choices_ = std::move(choices);
        list_->clear();
        for (const DescribedChoice& choice : choices_) {
            list_->addItem(ShownLine(WordsOf(choice.caption, needs_.captions, choice.value)),
                           ToQString(choice.value));
        }
    }

    EditorNeeds needs_;
    std::vector<DescribedChoice> choices_{};
    bool isFilled_ = false;
    QComboBox* list_ = new CalmBox;
};

class SwitchEditor final : public FieldEditor {
 public:
    SwitchEditor() {
        QHBoxLayout* row = NewRow(this);
        row->addWidget(box_);
        row->addStretch(1);
        connect(box_, &QCheckBox::toggled, this, [this](bool isOn) { onEdit(isOn ? "1" : "0"); });
    }
    void ShowValue(const Text& value) override {
        const QSignalBlocker silence(box_);
        box_->setChecked(IsTrue(value));
    }
    QWidget* Input() override { return box_; }

 private:
    QCheckBox* box_ = new QCheckBox;
};

/// A text, with what there is in a list beside it.
class OfferEditor final : public FieldEditor {
 public:
    explicit OfferEditor(const QStringList& words) {
        list_->setEditable(true);
        list_->setInsertPolicy(QComboBox::NoInsert);
        list_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
        list_->setMinimumContentsLength(kLetters);
        list_->addItems(words);
        QHBoxLayout* row = NewRow(this);
        row->addWidget(list_);
        row->addStretch(1);
        connect(list_, &QComboBox::currentTextChanged, this,
                [this](const QString& text) { onEdit(FromQString(text)); });
    }
    void ShowValue(const Text& value) override {
        const QSignalBlocker silence(list_);
        if (list_->currentText() != ToQString(value)) list_->setCurrentText(ToQString(value));
    }
    QWidget* Input() override { return list_; }
    /// More of them, behind those that are there.
    void Offer(const QStringList& words) { list_->addItems(words); }

 private:
    static constexpr int kLetters = 36;
    QComboBox* list_ = new CalmBox;
};

QStringList WordsOffered(const EditorNeeds& needs, const SetupField& field) {
    QStringList words;
    if (field.key.control == ControlKind::Font) return QStringList(QString()) + QFontDatabase::families();
    for (const DescribedChoice& choice : needs.form.ChoicesOf(field)) words << ToQString(choice.value);
    return words;
}

// The system is asked beside the window: a print server that does not answer must not hold it.
FieldEditor* NewPrinterEditor() {
    auto* editor = new OfferEditor({QString()});
    auto* question = new QProcess(editor);
    QObject::connect(question, &QProcess::finished, editor, [editor, question] {
        editor->Offer(
            QString::fromLocal8Bit(question->readAllStandardOutput()).split('\n', Qt::SkipEmptyParts));
    });
    question->start(QStringLiteral("lpstat"), {QStringLiteral("-e")}, QIODevice::ReadOnly);
    return editor;
}

FieldEditor* NewSoundEditor(const EditorNeeds& needs) {
    auto* editor = new FileEditor(needs.captions, false);
    editor->AddPlay(needs);
    return editor;
}

FieldEditor* NewLineEditor(ControlKind control) {
    auto* editor = new LineEditor;
    if (control == ControlKind::Password) editor->HideText();
    if (control == ControlKind::Number || control == ControlKind::Priorities) editor->MakeNarrow();
    return editor;
}

}  // namespace

FieldEditor* NewFieldEditor(const EditorNeeds& needs) {
    const SetupField& field = needs.form.Fields()[needs.field];
    switch (field.key.control) {
        case ControlKind::Choice:
        case ControlKind::Language:
            return new ChoiceEditor(needs);
        case ControlKind::Switch:
            return new SwitchEditor;
        case ControlKind::Color:
            return NewColorEditor(needs.captions);
        case ControlKind::ColorPair:
            return NewColorPairEditor(needs.captions);
        case ControlKind::Printer:
            return NewPrinterEditor();
        case ControlKind::Font:
        case ControlKind::Offered:
            return new OfferEditor(WordsOffered(needs, field));
        case ControlKind::File:
        case ControlKind::Folder:
            return new FileEditor(needs.captions, field.key.control == ControlKind::Folder);
        case ControlKind::Sound:
            return NewSoundEditor(needs);
        case ControlKind::Columns:
            return NewColumnsEditor(needs.captions);
        default:
            return NewLineEditor(field.key.control);
    }
}

}  // namespace nordkeep
