#include "console/lists/SharedCaptions.h"
#include "console/views/editors/RowsPane.h"
#include "platform/qt/QtText.h"

#include <QtWidgets/QBoxLayout>
#include <QtWidgets/QFileDialog>

namespace nordkeep {
namespace {

constexpr int kCaptionImport = 4819;
constexpr const char* kFilter = "CSV (*.csv)";

}  // namespace

void RowsPane::AskImport() {
    auto* dialog = new QFileDialog(this, QString(), QString(), QString::fromLatin1(kFilter));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setFileMode(QFileDialog::ExistingFile);
    connect(dialog, &QFileDialog::fileSelected, this, [this](const QString& file) { PreviewImport(file); });
    dialog->open();
}

/// What the file would change, before it does.
void RowsPane::PreviewImport(const QString& file) {
    const auto text = rows_.TextToImport(file.toStdString());
    if (!text) return;
    const RowsBox::ImportPlan plan = rows_.PlanImport(*text);
    auto* dialog = new QDialog(this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setWindowTitle(CaptionText(captions_, kCaptionImport));
    auto* changes = NewReadOnlyBox();
    changes->setLineWrapMode(QPlainTextEdit::NoWrap);
    QStringList lines;
    for (const Text& line : plan.preview) lines << ShownLine(line);
    changes->setPlainText(lines.join(QLatin1Char('\n')));
    QPushButton* import = NewButton(captions_, kCaptionImport);
    import->setEnabled(plan.fault.empty() && !plan.step.empty());
    QPushButton* back = NewButton(captions_, kCaptionBack);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(import);
    buttons->addWidget(back);
    auto* layout = new QVBoxLayout(dialog);
    layout->addWidget(NewDataLabel(ShownText(rows_.SummaryOf(plan))));
    layout->addWidget(changes, 1);
    layout->addLayout(buttons);
    connect(back, &QPushButton::clicked, dialog, &QDialog::reject);
    connect(import, &QPushButton::clicked, dialog, [this, dialog, text = *text] {
        dialog->accept();
        rows_.Import(text);
    });
    dialog->resize(760, 480);
    dialog->open();
}

void RowsPane::AskExport() {
    auto* dialog = new QFileDialog(this, QString(), QString(), QString::fromLatin1(kFilter));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setDefaultSuffix(QStringLiteral("csv"));
    connect(dialog, &QFileDialog::fileSelected, this,
            [this](const QString& file) { rows_.ExportTo(file.toStdString()); });
    dialog->open();
}

}  // namespace nordkeep
