#include "console/lists/SharedCaptions.h"
#include "console/views/lists/Icons.h"
#include "console/views/lists/ListPane.h"
#include "console/views/lists/TreePane.h"
#include "console/views/lists/ViewParts.h"
#include "console/views/window/ConditionStrip.h"
#include "console/views/window/DebugPane.h"
#include "console/views/window/EdgeStrip.h"
#include "console/views/window/MainWindow.h"
#include "platform/qt/QtText.h"

#include <QtCore/QUrl>
#include <QtGui/QDesktopServices>
#include <QtGui/QShortcut>
#include <QtWidgets/QApplication>
#include <QtWidgets/QDialog>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMenuBar>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QSplitter>
#include <QtWidgets/QStatusBar>
#include <QtWidgets/QSystemTrayIcon>
#include <QtWidgets/QTabWidget>
#include <QtWidgets/QToolBar>
#include <QtWidgets/QVBoxLayout>

namespace nordkeep {
namespace {

constexpr int kCaptionTree = 3007;
constexpr int kCaptionInfo = 3008;
constexpr int kCaptionMap = 3047;
constexpr int kCaptionShowWindow = 3560;
constexpr int kCaptionLink = 3648;
constexpr int kCaptionOpensService = 5646;

/// The colours that the settings name; the others stay those of the theme, also of one that comes later.
void TakeColors(QWidget& widget, std::initializer_list<std::pair<QPalette::ColorRole, Text>> numbers) {
    QPalette colors;
    for (const auto& [role, number] : numbers) {
        if (const auto color = ParseColorNumber(number)) colors.setColor(role, ToQColor(*color));
    }
    widget.setPalette(colors);
}

/// A heading above a pane, with a margin that lines up with the tabs beside it.
QWidget* WithHeading(const QString& text, QWidget* pane, QWidget* beside = nullptr) {
    auto* part = new QWidget;
    auto* layout = new QVBoxLayout(part);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(4);
    auto* top = new QHBoxLayout;
    top->setContentsMargins(4, 4, 0, 0);
    top->addWidget(NewHeading(text, pane));
    top->addStretch(1);
    if (beside) top->addWidget(beside);
    layout->addLayout(top);
    layout->addWidget(pane, 1);
    return part;
}

}  // namespace

// --- Commands

void MainWindow::AddActions() {
    for (int number = 0; number < kCommandCount; ++number) {
        const auto command = static_cast<Command>(number);
        auto* action = new QAction(ShownLine(captions_(CaptionOf(command))), this);
        action->setCheckable(IsCheckable(command));
        if (const char* keys = KeysOf(command); *keys != '\0') {
            action->setShortcut(QKeySequence(QString::fromLatin1(keys)));
            // The sound can be silenced from every window.
            action->setShortcutContext(command == Command::FileSoundStop ? Qt::ApplicationShortcut
                                                                         : Qt::WindowShortcut);
        }
        connect(action, &QAction::triggered, this, [this, command] { box_.Run(command); });
        addAction(action);
        actions_[static_cast<std::size_t>(number)] = action;
    }
    ActionOf(Command::Exit)->setMenuRole(QAction::NoRole);
    RenewIcons();
}

void MainWindow::RenewIcons() {
    for (int number = 0; number < kToolBarButtons; ++number) {
        const bool isPressed = static_cast<Command>(number) == Command::ShowLast && showsLastPressed_;
        actions_[static_cast<std::size_t>(number)]->setIcon(
            ToolBarIcon(isPressed ? 12 : number + 1, palette()));
    }
}

void MainWindow::AddMenus() {
    for (const MenuRow& row : MainMenus()) {
        QMenu* menu = menuBar()->addMenu(CaptionText(captions_, row.caption));
        for (const int item : row.items) {
            if (item == kMenuSeparator) {
                menu->addSeparator();
            } else if (item == kMenuMaps) {
                mapMenu_ = menu->addMenu(CaptionText(captions_, kCaptionMap));
                connect(mapMenu_, &QMenu::aboutToShow, this, [this] { FillMapMenu(mapMenu_); });
            } else {
                menu->addAction(actions_[static_cast<std::size_t>(item)]);
            }
        }
        if (row.isSimulation) simulateMenu_ = menu;
    }
}

void MainWindow::AddToolBar() {
    toolBar_ = addToolBar(QString());
    toolBar_->setObjectName(QStringLiteral("Toolbar"));
    toolBar_->setMovable(false);
    toolBar_->setContextMenuPolicy(Qt::PreventContextMenu);
    toolBar_->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    toolBar_->setIconSize(QSize(24, 24));
    for (int number = 0; number < kToolBarButtons; ++number) {
        const auto command = static_cast<Command>(number);
        if (command == Command::PrintSelected || command == Command::EditIDCodes ||
            command == Command::Update) {
            toolBar_->addSeparator();
        }
        toolBar_->addAction(ActionOf(command));
    }
    toolBar_->setVisible(box_.Looks().HasToolBar());
    setContextMenuPolicy(Qt::NoContextMenu);
}

// --- The centre

void MainWindow::AddCentre() {
    sides_ = new QSplitter(Qt::Horizontal);
    sides_->addWidget(NewTreePart());
    halves_ = new QSplitter(Qt::Vertical);
    halves_->addWidget(NewListPart());
    halves_->addWidget(NewInfoPart());
    halves_->setStretchFactor(0, 1);
    halves_->setStretchFactor(1, 0);
    halves_->setChildrenCollapsible(false);
    sides_->addWidget(halves_);
    sides_->setStretchFactor(0, 0);
    sides_->setStretchFactor(1, 1);
    sides_->setCollapsible(1, false);
    auto* frame = new QWidget;
    auto* layout = new QVBoxLayout(frame);
    layout->setContentsMargins(6, 4, 6, 0);
    layout->setSpacing(4);
    conditions_ = new ConditionStrip(captions_);
    conditions_->onOpen = [this](const Condition& condition) { box_.OpenCondition(condition); };
    layout->addWidget(conditions_);
    layout->addWidget(sides_, 1);
    setCentralWidget(frame);
    if (const auto color = ParseColorNumber(box_.Looks().BackColor)) {
        QPalette colors = palette();
        colors.setColor(QPalette::Window, ToQColor(*color));
        setPalette(colors);
    }
}

QWidget* MainWindow::NewTreePart() {
    tree_ = new TreePane(box_.Objects().Tree(), captions_);
    tree_->onSelect = [this](int node) { box_.Objects().SelectNode(node); };
    tree_->onPopup = [this](QPoint place) {
        if (!box_.MayShowPopup()) return;
        QMenu menu;
        menu.addAction(ActionOf(Command::TranslationEdit));
        menu.exec(place);
    };
    return WithHeading(CaptionText(captions_, kCaptionTree), tree_);
}

QWidget* MainWindow::NewListPart() {
    pages_ = new QTabWidget;
    pages_->setDocumentMode(true);
    AddTabs();
    AddFilterBox();
    connect(pages_, &QTabWidget::currentChanged, this, [this](int page) {
        if (!isShowing_ && page >= 0) box_.ShowTab(static_cast<Tab>(page));
    });
    edge_ = new EdgeStrip;
    edge_->onNews = [this] { box_.Run(Command::FollowNews); };
    edge_->onUndo = [this] { box_.Run(Command::UndoEnd); };
    ListOf(Tab::Unacked)->onScroll = [this] { ShowEdge(); };
    auto* part = new QWidget;
    auto* layout = new QVBoxLayout(part);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(pages_, 1);
    layout->addWidget(edge_);
    return part;
}

ListPane* MainWindow::NewList(Tab tab, TextView section) {
    const auto place = static_cast<std::size_t>(tab);
    adapters_[place] = std::make_unique<RowAdapter>(box_.ListOf(tab));
    auto* list = new ListPane(*adapters_[place]);
    list->setAccessibleName(CaptionText(captions_, CaptionOf(tab)));
    if (const Text& name = box_.Looks().FontName; !name.empty()) {
        QFont font = list->font();
        font.setFamily(ToQString(name));
        list->setFont(font);
    }
    list->MarkFirstCellOnly(!box_.Looks().FullRowSelect);
    list->UseWidths(ColumnWidths(needs_.files, section, box_.Looks().MinColumnWidth));
    list->onSelection = [this, tab] { TakeSelection(tab); };
    list->onActivate = [this, tab] {
        TakeSelection(tab);
        box_.Activate(tab);
    };
    list->onPopup = [this, tab](QPoint at) { PopUpFor(tab, at); };
    lists_[place] = list;
    return list;
}

void MainWindow::AddTabs() {
    constexpr std::pair<Tab, TextView> kLists[] = {
        {Tab::Unacked, kUnackedSection}, {Tab::Acked, kAckedSection}, {Tab::SysLog, kSysLogSection},
        {Tab::IdCodes, kIdCodesSection}, {Tab::Types, kTypesSection}, {Tab::DataCodes, kDataCodesSection},
        {Tab::Lines, kLinesSection},
    };
    for (const auto& [tab, section] : kLists) NewList(tab, section);
    ListOf(Tab::IdCodes)->FollowTyping(true);
    ListOf(Tab::SysLog)->StretchLastColumn();
    ListOf(Tab::SysLog)->FollowEnd(true);
    debug_ = new DebugPane(box_.Debug(), captions_);
    lists_[static_cast<std::size_t>(Tab::Debug)] = &debug_->List();
    TakeColors(debug_->List(), {{QPalette::Text, box_.Looks().DebugForeColor},
                                {QPalette::Base, box_.Looks().DebugBackColor}});
    for (int number = 0; number < kTabCount; ++number) {
        const auto tab = static_cast<Tab>(number);
        QWidget* page = tab == Tab::Debug ? static_cast<QWidget*>(debug_) : ListOf(tab);
        pages_->addTab(page, CaptionText(captions_, CaptionOf(tab)));
    }
}

void MainWindow::AddFilterBox() {
    filter_ = new QLineEdit;
    filter_->setPlaceholderText(CaptionText(captions_, kCaptionFilter));
    filter_->setClearButtonEnabled(true);
    filter_->setMinimumWidth(filter_->fontMetrics().horizontalAdvance(filter_->placeholderText()) + 40);
    filter_->setAccessibleName(filter_->placeholderText());
    connect(filter_, &QLineEdit::textChanged, this, [this](const QString& text) {
        const Tab tab = box_.Tabs().current;
        if (isShowing_) return;
        filters_[static_cast<std::size_t>(tab)] = text;
        if (IsAlarmTab(tab)) return box_.Alarms().SetFilter(tab, FromQString(text));
        ListOf(tab)->FindNext(text);
    });
    // The other pages show all rows; Enter leads on to the next that fits.
    connect(filter_, &QLineEdit::returnPressed, this, [this] {
        const Tab tab = box_.Tabs().current;
        IsAlarmTab(tab) ? ListOf(tab)->setFocus() : ListOf(tab)->FindNext(filter_->text());
    });
    auto* leave = new QShortcut(QKeySequence(Qt::Key_Escape), filter_);
    leave->setContext(Qt::WidgetShortcut);
    connect(leave, &QShortcut::activated, this, [this] {
        filter_->clear();
        ListOf(box_.Tabs().current)->setFocus();
    });
    auto* corner = new QWidget;
    auto* layout = new QHBoxLayout(corner);
    layout->setContentsMargins(8, 0, 1, 3);
    layout->addWidget(filter_);
    pages_->setCornerWidget(corner, Qt::TopRightCorner);
}

QWidget* MainWindow::NewInfoPart() {
    info_ = NewReadOnlyBox();
    link_ = NewButton(captions_, kCaptionLink);
    link_->hide();
    connect(link_, &QPushButton::clicked, this, [this] {
        const QUrl url(ToQString(box_.Alarms().Link()));
        const bool isWeb = url.scheme() == QLatin1String("http") || url.scheme() == QLatin1String("https");
        if (url.isValid() && isWeb) QDesktopServices::openUrl(url);
    });
    return WithHeading(CaptionText(captions_, kCaptionInfo), info_, link_);
}

// --- Status bar, tray, windows of their own

void MainWindow::AddStatusBar() {
    statusBar()->setSizeGripEnabled(true);
    line_ = NewLabel();
    line_->setContentsMargins(6, 0, 0, 0);
    line_->setMinimumWidth(40);
    line_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    statusBar()->addWidget(line_, 1);
    for (QLabel** label : {&unacked_, &byPriority_, &acked_, &oldest_, &user_, &clock_}) {
        if (label == &oldest_) statusBar()->addPermanentWidget(NewServiceButton());
        *label = NewLabel();
        (*label)->setContentsMargins(8, 2, 8, 2);
        statusBar()->addPermanentWidget(*label);
    }
    const ConsoleSettings& looks = box_.Looks();
    if (looks.StatusBarFontSize > 0) {
        QFont font = statusBar()->font();
        font.setPointSize(looks.StatusBarFontSize);
        statusBar()->setFont(font);
        for (QLabel* label : {line_, unacked_, byPriority_, acked_, oldest_, user_, clock_})
            label->setFont(font);
    }
    TakeColors(*statusBar(), {{QPalette::WindowText, looks.StatusBarForeColor},
                              {QPalette::Window, looks.StatusBarBackColor}});
    statusBar()->setAutoFillBackground(true);
    QFont bold = unacked_->font();
    bold.setBold(true);
    unacked_->setFont(bold);
}

QWidget* MainWindow::NewServiceButton() {
    inService_ = new QPushButton;
    inService_->setFlat(true);
    inService_->setToolTip(CaptionText(captions_, kCaptionOpensService));
    inService_->setAccessibleDescription(inService_->toolTip());
    inService_->hide();
    connect(inService_, &QPushButton::clicked, this, [this] { box_.Run(Command::ShiftHandover); });
    return inService_;
}

void MainWindow::AddFloatingWindows() {
    const auto newWindow = [this](Tab tab, QWidget* page, Command command) {
        auto* window = new QDialog(this, Qt::Tool);
        window->setWindowTitle(CaptionText(captions_, CaptionOf(tab)));
        auto* layout = new QVBoxLayout(window);
        layout->setContentsMargins(0, 0, 0, 0);
        layout->addWidget(page);
        page->show();
        window->resize(760, 320);
        connect(window, &QDialog::rejected, this, [this, command] {
            if (!isShowing_ && box_.StateOf(command).isChecked) box_.Run(command);
        });
        return window;
    };
    if (box_.Looks().FloatingSysLogWindow) {
        sysLogWindow_ = newWindow(Tab::SysLog, ListOf(Tab::SysLog), Command::ShowSysLog);
        pages_->insertTab(static_cast<int>(Tab::SysLog), new QWidget, QString());
    }
    if (box_.Looks().FloatingDebugWindow) {
        debugWindow_ = newWindow(Tab::Debug, debug_, Command::ShowDebug);
        pages_->insertTab(static_cast<int>(Tab::Debug), new QWidget, QString());
    }
}

void MainWindow::AddTray() {
    if (!QSystemTrayIcon::isSystemTrayAvailable()) return;
    trayMenu_ = new QMenu;
    QAction* show = trayMenu_->addAction(CaptionText(captions_, kCaptionShowWindow));
    trayMenu_->addAction(ActionOf(Command::FileSoundStop));
    tray_ = new QSystemTrayIcon(TrayIconOf({}), this);
    tray_->setContextMenu(trayMenu_);
    const auto restore = [this] {
        box_.PopUp();
        showNormal();
        activateWindow();
    };
    connect(show, &QAction::triggered, this, restore);
    connect(tray_, &QSystemTrayIcon::activated, this, [restore](QSystemTrayIcon::ActivationReason reason) {
        if (reason != QSystemTrayIcon::Context) restore();
    });
    tray_->show();
}

void MainWindow::ShowTray() {
    const Tray tray = box_.TrayIcon();
    if (!tray_ || tray == shownTray_) return;
    shownTray_ = tray;
    tray_->setIcon(TrayIconOf(tray));
    tray_->setToolTip(windowTitle());
}

}  // namespace nordkeep
