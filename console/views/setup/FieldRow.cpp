#include "console/views/setup/FieldRow.h"

#include "console/views/lists/Theme.h"

#include <QtWidgets/QGridLayout>

namespace nordkeep {
namespace {

constexpr int kCaptionDefault = 3865;
constexpr int kCaptionWorkstation = 3891;
constexpr int kCaptionCentre = 3892;
constexpr int kCaptionLetters = 34;  // width of the captions
constexpr int kGap = 8;              // px
constexpr int kCaptionDrop = 4;      // px, down to the line of the text that is edited

}  // namespace

FieldRow::FieldRow(const EditorNeeds& needs, EditorMaker make)
    : needs_(needs),
      caption_(NewDataLabel()),
      editor_(make(needs)),
      default_(NewButton(needs.captions, kCaptionDefault)),
      help_(NewDataLabel()) {
    const SetupField& field = Field();
    const QString caption = ShownLine(field.caption);
    caption_->setText(caption);
    caption_->setBuddy(editor_->Input());
    caption_->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Preferred);
    caption_->setFixedWidth(caption_->fontMetrics().averageCharWidth() * kCaptionLetters);
    caption_->setContentsMargins(0, kCaptionDrop, 0, 0);
    editor_->Input()->setAccessibleName(caption);
    // What belongs to no settings file has no default to go back to.
    default_->setVisible(!field.key.section.empty());
    default_->setFlat(true);
    default_->setAccessibleName(default_->text() + QStringLiteral(", ") + caption);
    default_->setToolTip(ToolTipText(ShownLine(field.key.byDefault)));
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, kGap);
    grid->setVerticalSpacing(2);
    // Over both rows: a caption of two lines moves neither the field nor its help.
    grid->addWidget(caption_, 0, 0, 2, 1, Qt::AlignTop);
    grid->addWidget(editor_, 0, 1);
    grid->addWidget(default_, 0, 2, Qt::AlignTop);
    grid->addWidget(help_, 1, 1, 1, 2);
    grid->setColumnStretch(1, 1);
    FieldForm& form = needs.form;
    editor_->onEdit = [&form, number = needs.field](const Text& value) { form.Type(number, value); };
    connect(default_, &QPushButton::clicked, this,
            [&form, number = needs.field] { form.UseDefault(number); });
    ShowValue();
    ShowState();
}

QString FieldRow::HelpText() const {
    const SetupField& field = Field();
    QString text = ShownLine(field.help);
    if (field.key.section.empty()) return text;
    if (field.key.when == AppliesWhen::Restart)
        text += QStringLiteral(" ") + ShownLine(AppliesText(field, needs_.captions));
    text += QStringLiteral(" (") + ShownLine(field.key.section + ", " + field.key.key);
    if (field.key.scope != SettingScope::Port) {
        const int scope = field.key.scope == SettingScope::Centre ? kCaptionCentre : kCaptionWorkstation;
        text += QStringLiteral(", ") + CaptionText(needs_.captions, scope).toLower();
    }
    return text + QStringLiteral(")");
}

void FieldRow::ShowValue() {
    editor_->ShowValue(Field().typed);
}

// The fault takes the place of the help, so that nothing below it moves while somebody types.
void FieldRow::ShowState() {
    const SetupField& field = Field();
    QFont font = caption_->font();
    font.setBold(field.IsChanged());
    caption_->setFont(font);
    const QString fault = ShownLine(field.fault);
    if (!fault.isEmpty() && help_->isVisible()) help_->setMinimumHeight(help_->height());
    help_->setText(fault.isEmpty() ? HelpText() : QStringLiteral("! ") + fault);
    editor_->Input()->setAccessibleDescription(help_->text());
    QPalette colors = palette();
    colors.setColor(QPalette::WindowText, fault.isEmpty() ? MutedColor(colors) : WarningColor(colors));
    help_->setPalette(colors);
    editor_->setEnabled(!field.isReadOnly);
    default_->setEnabled(!field.isReadOnly && !field.IsDefault());
}

}  // namespace nordkeep
