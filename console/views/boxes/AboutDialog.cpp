#include "console/views/boxes/AboutDialog.h"

#include "console/lists/SharedCaptions.h"

#include <QtWidgets/QBoxLayout>

namespace nordkeep {
namespace {

constexpr const char* kProgramName = "Nordkeep";
constexpr int kNameSize = 22;  // points

}  // namespace

AboutDialog::AboutDialog(const AboutText& about, const Captions& captions, QWidget* parent)
    : QDialog(parent) {
    setModal(false);
    setWindowTitle(ShownLine(about.title));
    QLabel* name = NewHeading(QString::fromLatin1(kProgramName));
    QFont large = name->font();
    large.setPointSize(kNameSize);
    name->setFont(large);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(24, 20, 24, 16);
    layout->addWidget(name);
    layout->addWidget(NewLabel(ShownLine(about.description)));
    layout->addSpacing(12);
    for (const Text& line : about.lines) layout->addWidget(NewDataLabel(ShownLine(line)));
    layout->addSpacing(12);
    auto* close = NewButton(captions, kCaptionClose);
    close->setDefault(true);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(close);
    layout->addLayout(buttons);
    connect(close, &QPushButton::clicked, this, &QDialog::close);
}

}  // namespace nordkeep
