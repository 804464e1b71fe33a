#include "console/lists/SharedCaptions.h"
#include "console/views/lists/ListPane.h"
#include "console/views/lists/ViewParts.h"
#include "console/views/window/MainWindow.h"

#include <QtGui/QShortcut>
#include <QtWidgets/QDialog>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMenu>
#include <QtWidgets/QTableWidget>
#include <QtWidgets/QVBoxLayout>

namespace nordkeep {
namespace {

/// A key of the window that is no command.
struct WindowKey {
    int caption;
    const char* keys;
};
constexpr int kCaptionPages = 3641;
constexpr int kCaptionNextPane = 3642;
constexpr int kCaptionOpen = 3643;
constexpr int kCaptionPopup = 3644;
constexpr int kCaptionTextSize = 3645;
constexpr int kCaptionFullScreen = 3646;
constexpr int kCaptionMoveSheet = 5800;
constexpr WindowKey kWindowKeys[] = {
    {kCaptionPages, "Ctrl+1 ... Ctrl+8"},
    {kCaptionNextPane, "F6"},
    {kCaptionMoveSheet, "Shift+F6"},
    {kCaptionOpen, "Enter"},
    {kCaptionPopup, "Menu, Shift+F10"},
    {kCaptionFilter, "Ctrl+F, Esc"},
    {kCaptionTextSize, "Ctrl++, Ctrl+-, Ctrl+0"},
    {kCaptionFullScreen, "F11"},
};
constexpr int kCaptionKeys = 3647;
constexpr qsizetype kMostItems = 400;

}  // namespace

void MainWindow::AddKey(const char* keys, std::function<void()> act) {
    auto* key = new QShortcut(QKeySequence(QString::fromLatin1(keys)), this);
    connect(key, &QShortcut::activated, this, [act = std::move(act)] { act(); });
}

void MainWindow::AddKeys() {
    for (int number = 0; number < kTabCount; ++number) {
        const QByteArray keys = "Ctrl+" + QByteArray::number(number + 1);
        AddKey(keys.constData(), [this, number] {
            const auto tab = ShownPage(number);
            if (!tab) return;
            box_.ShowTab(*tab);
            if (ListPane* list = ListOf(box_.Tabs().current)) list->setFocus(Qt::ShortcutFocusReason);
        });
    }
    AddKey("F6", [this] { NextPane(); });
    AddKey("F11", [this] { ToggleFullScreen(); });
    AddKey("Ctrl+F", [this] {
        filter_->setFocus(Qt::ShortcutFocusReason);
        filter_->selectAll();
    });
    AddKey("Ctrl++", [this] { Zoom(1); });
    AddKey("Ctrl+=", [this] { Zoom(1); });
    AddKey("Ctrl+-", [this] { Zoom(-1); });
    AddKey("Ctrl+0", [this] {
        fontSize_ = 0;
        Zoom(0);
    });
}

// Pages that are not shown do not count.
std::optional<Tab> MainWindow::ShownPage(int number) const {
    for (int page = 0; page < kTabCount; ++page) {
        if (!box_.Tabs().isVisible[static_cast<std::size_t>(page)]) continue;
        if (number-- == 0) return static_cast<Tab>(page);
    }
    return std::nullopt;
}

// --- Popups

void MainWindow::PopUpFor(Tab tab, QPoint place) {
    if (!box_.MayShowPopup()) return;
    if (tab == Tab::IdCodes) return PopUpForObject(place);
    if (tab == Tab::Lines) return PopUpForLine(place);
    if (!IsAlarmTab(tab) || box_.SelectionOf(tab).keys.empty()) return;
    QMenu menu;
    for (const Command command : {Command::PopupComments, Command::PopupCopy, Command::PopupPrint}) {
        menu.addAction(ActionOf(command));
    }
    menu.addSeparator();
    menu.addAction(ActionOf(tab == Tab::Unacked ? Command::PopupClose : Command::PopupArchive));
    menu.exec(place);
}

void MainWindow::PopUpForLine(QPoint place) {
    QMenu menu;
    menu.addAction(ActionOf(Command::LineHold));
    menu.addAction(ActionOf(Command::FileSetup));
    menu.exec(place);
}

void MainWindow::PopUpForObject(QPoint place) {
    if (!box_.StateOf(Command::ObjectComments).isEnabled) return;
    const ObjectMenu items = box_.Objects().Menu();
    if (items.service.empty()) return;
    QMenu menu;
    QMenu* service = menu.addMenu(WithoutMnemonics(ShownLine(items.service)));
    service->setEnabled(box_.StateOf(Command::ServiceInUse).isEnabled);
    const auto add = [&](const QString& text, bool isChecked, Command command, int item) {
        QAction* action = service->addAction(text);
        action->setCheckable(true);
        action->setChecked(isChecked);
        connect(action, &QAction::triggered, this, [this, command, item] { box_.Run(command, item); });
    };
    add(ActionOf(Command::ServiceInUse)->text(), items.mode == static_cast<int>(ServiceMode::InUse),
        Command::ServiceInUse, 0);
    for (const ObjectMenu::LogOnlyItem& item : items.logOnly) {
        add(ShownLine(item.caption), item.isChecked, Command::ServiceLogOnly, item.item);
    }
    add(ActionOf(Command::ServicePeriod)->text(), items.mode == static_cast<int>(ServiceMode::LogInPeriod),
        Command::ServicePeriod, 0);
    menu.addAction(ActionOf(Command::ObjectComments));
    ActionOf(Command::ObjectEdit)->setText(ShownLine(items.edit));
    menu.addAction(ActionOf(Command::ObjectEdit));
    for (const Command command : {Command::TypeCodeEdit, Command::DataCodeEdit}) {
        QMenu* codes = menu.addMenu(CaptionText(captions_, CaptionOf(command)));
        codes->setEnabled(box_.StateOf(command).isEnabled);
        connect(codes, &QMenu::aboutToShow, this,
                [this, codes, which = command] { FillCodeMenu(codes, which); });
    }
    menu.addSeparator();
    menu.addAction(ActionOf(Command::ResetAliveTest));
    menu.exec(place);
}

void MainWindow::FillCodeMenu(QMenu* menu, Command command) {
    menu->clear();
    const auto items =
        command == Command::TypeCodeEdit ? box_.Objects().TypeCodeItems() : box_.Objects().DataCodeItems();
    int number = 0;
    for (const CodeText& item : items) {
        if (number >= kMostItems) break;
        QAction* action = menu->addAction(WithoutMnemonics(ShownLine(item.caption)));
        connect(action, &QAction::triggered, this, [this, command, number] { box_.Run(command, number); });
        ++number;
    }
    if (number == 0) menu->addAction(QStringLiteral("-"))->setEnabled(false);
}

void MainWindow::FillMapMenu(QMenu* menu) {
    menu->clear();
    menu->addAction(ActionOf(Command::MapOfAlarm));
    menu->addSeparator();
    qsizetype count = 0;
    for (const Text& map : box_.Objects().Maps()) {
        if (++count > kMostItems) break;
        QAction* action = menu->addAction(WithoutMnemonics(ShownLine(map)));
        action->setEnabled(box_.MayShowPopup());
        connect(action, &QAction::triggered, this, [this, map] { box_.Objects().OpenMap(map); });
    }
}

// --- The sheet of keys

void MainWindow::ShowKeys() {
    auto* sheet = new QDialog(this);
    sheet->setAttribute(Qt::WA_DeleteOnClose);
    sheet->setWindowTitle(CaptionText(captions_, kCaptionKeys));
    auto* table = new QTableWidget(0, 2);
    table->horizontalHeader()->hide();
    table->verticalHeader()->hide();
    table->setShowGrid(false);
    table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table->setSelectionMode(QAbstractItemView::NoSelection);
    table->setFocusPolicy(Qt::NoFocus);
    table->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 8);
    const auto add = [&](int caption, const QString& keys) {
        const int row = table->rowCount();
        table->insertRow(row);
        table->setItem(row, 0, new QTableWidgetItem(keys));
        table->setItem(row, 1, new QTableWidgetItem(PlainCaption(captions_, caption)));
    };
    for (int number = 0; number < kCommandCount; ++number) {
        const auto command = static_cast<Command>(number);
        const QString keys = QString::fromLatin1(KeysOf(command));
        if (!keys.isEmpty()) add(CaptionOf(command), keys);
    }
    for (const WindowKey& key : kWindowKeys) add(key.caption, QString::fromLatin1(key.keys));
    table->resizeColumnToContents(0);
    table->setColumnWidth(0, table->columnWidth(0) + 16);
    table->horizontalHeader()->setStretchLastSection(true);
    auto* layout = new QVBoxLayout(sheet);
    layout->addWidget(table);
    const int rows = table->rowCount() * table->verticalHeader()->defaultSectionSize();
    sheet->resize(500, qMin(rows + 40, 640));
    sheet->show();
}

}  // namespace nordkeep
