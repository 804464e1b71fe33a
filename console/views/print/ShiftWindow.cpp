#include "console/views/print/ShiftWindow.h"

#include "console/lists/SharedCaptions.h"

#include <QtWidgets/QBoxLayout>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QTreeWidget>

namespace nordkeep {
namespace {}  // namespace

ShiftWindow::ShiftWindow(const ShiftList& list, const Captions& captions, std::function<void()> print,
                         QWidget* parent)
    : QDialog(parent) {
    setModal(false);
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    setWindowTitle(PlainCaption(captions, kCaptionShiftTitle));
    auto* tree = new QTreeWidget;
    tree->setHeaderHidden(true);
    for (const ShiftList::Part& part : list.Parts()) {
        const QString count = QStringLiteral(" (%1)").arg(part.lines.size());
        auto* heading = new QTreeWidgetItem(tree, {ShownLine(part.heading) + count});
        QFont bold = heading->font(0);
        bold.setBold(true);
        heading->setFont(0, bold);
        if (part.lines.empty()) new QTreeWidgetItem(heading, {CaptionText(captions, kCaptionNoLines)});
        for (const Text& line : part.lines) new QTreeWidgetItem(heading, {ShownLine(line)});
        heading->setExpanded(true);
    }
    auto* printButton = NewButton(captions, kCaptionPrint);
    auto* close = NewButton(captions, kCaptionClose);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(printButton);
    buttons->addWidget(close);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(tree, 1);
    layout->addLayout(buttons);
    connect(printButton, &QPushButton::clicked, this, [print = std::move(print)] { print(); });
    connect(close, &QPushButton::clicked, this, &QDialog::close);
    resize(760, 520);
}

}  // namespace nordkeep
