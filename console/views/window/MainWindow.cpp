#include "console/views/window/MainWindow.h"

#include "console/views/boxes/AboutDialog.h"
#include "console/views/boxes/FindingsWindow.h"
#include "console/views/boxes/PrinterFontDialog.h"
#include "console/views/lists/Icons.h"
#include "console/views/lists/ListPane.h"
#include "console/views/lists/Theme.h"
#include "console/views/lists/TreePane.h"
#include "console/views/lists/ViewParts.h"
#include "console/views/window/ConditionStrip.h"
#include "console/views/window/DebugPane.h"
#include "console/views/window/EdgeStrip.h"
#include "platform/qt/QtText.h"

#include <QtCore/QUrl>
#include <QtGui/QClipboard>
#include <QtGui/QCloseEvent>
#include <QtGui/QDesktopServices>
#include <QtGui/QScreen>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMenu>
#include <QtWidgets/QSplitter>
#include <QtWidgets/QSystemTrayIcon>
#include <QtWidgets/QTabWidget>
#include <QtWidgets/QToolBar>

namespace nordkeep {
namespace {

constexpr int kSmallestFont = 6;
constexpr int kLargestFont = 40;
const char kFontKey[] = "MainBox_ListFontSize";
const char kTreeKey[] = "MainBox_TreeWidth";
const char kInfoKey[] = "MainBox_InfoHeight";

constexpr const char* kGeometryKeys[] = {"MainBox_Left", "MainBox_Top", "MainBox_Width", "MainBox_Height"};

}  // namespace

MainWindow::MainWindow(const Needs& needs) : needs_(needs), box_(needs.box), captions_(needs.box.Words()) {
    setWindowIcon(ProgramIcon());
    ApplyScheme();
    fontSize_ = needs_.store.Read(kFontKey).value_or(0);
    AddActions();
    AddMenus();
    AddToolBar();
    AddCentre();
    AddStatusBar();
    AddFloatingWindows();
    AddKeys();
    AddTray();
    RestoreGeometry();
    box_.SetView(this);
    Zoom(0);
    ShowState();
    ListOf(Tab::Unacked)->setFocus();
}

MainWindow::~MainWindow() {
    box_.SetView(nullptr);
    delete trayMenu_;
    // The pages look at the adapters, which go before the window's own part.
    delete takeCentralWidget();
    delete sysLogWindow_;
    delete debugWindow_;
}

// --- Start, geometry, end

void MainWindow::ShowAtStart(const MainWindowStart& start) {
    if (start.isTopmost) setWindowFlag(Qt::WindowStaysOnTopHint);
    if (start.isMinimised) {
        showMinimized();
    } else if (start.isMaximised) {
        showMaximized();
    } else {
        show();
    }
}

void MainWindow::RestoreGeometry() {
    int values[4] = {60, 40, 1280, 800};
    bool isKnown = true;
    for (std::size_t i = 0; i < 4; ++i) {
        const auto stored = needs_.store.Read(kGeometryKeys[i]);
        isKnown = isKnown && stored.has_value();
        values[i] = stored.value_or(values[i]);
    }
    const QRect wanted(values[0], values[1], qBound(400, values[2], 20000), qBound(300, values[3], 20000));
    const QScreen* screen = QGuiApplication::screenAt(wanted.center());
    if (!screen) screen = QGuiApplication::primaryScreen();
    const QRect room = screen ? screen->availableGeometry() : wanted;
    const QSize size = wanted.size().boundedTo(room.size());
    const int left = qBound(room.left(), wanted.left(), room.right() + 1 - size.width());
    const int top = qBound(room.top(), wanted.top(), room.bottom() + 1 - size.height());
    setGeometry(left, top, size.width(), size.height());
    const int tree = needs_.store.Read(kTreeKey).value_or(240);
    const int info = needs_.store.Read(kInfoKey).value_or(110);
    sides_->setSizes({tree, qMax(100, size.width() - tree)});
    halves_->setSizes({qMax(100, size.height() - info), info});
}

void MainWindow::SaveState() {
    for (ListPane* list : lists_) {
        if (list) list->SaveWidths();
    }
    const QRect box = isMaximized() || isFullScreen() || isMinimized() ? normalGeometry() : geometry();
    const int values[4] = {box.left(), box.top(), box.width(), box.height()};
    for (std::size_t i = 0; i < 4; ++i) needs_.store.Write(kGeometryKeys[i], values[i]);
    needs_.store.Write(kTreeKey, sides_->sizes().value(0));
    needs_.store.Write(kInfoKey, halves_->sizes().value(1));
    needs_.store.Write(kFontKey, fontSize_);
}

void MainWindow::closeEvent(QCloseEvent* event) {
    if (mayClose_) return event->accept();
    event->ignore();
    box_.Run(Command::Exit);
}

void MainWindow::changeEvent(QEvent* event) {
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) RenewIcons();
    const bool hidesInTray = tray_ && !box_.Looks().ShowInTaskBar;
    if (event->type() == QEvent::WindowStateChange && isMinimized() && hidesInTray) {
        QMetaObject::invokeMethod(
            this, [this] { hide(); }, Qt::QueuedConnection);
    }
}

void MainWindow::PopUp() {
    if (isMinimized() || isHidden()) {
        // It comes back as it was, and takes no key from whoever types in another window.
        setAttribute(Qt::WA_ShowWithoutActivating);
        setWindowState(windowState() & ~Qt::WindowMinimized);
        show();
        setAttribute(Qt::WA_ShowWithoutActivating, false);
    }
    const QWidget* active = QApplication::activeWindow();
    if (!active || active == this) raise();
    QApplication::alert(this);
}

// --- Showing the model

void MainWindow::ShowState() {
    if (isShowing_) return;
    ApplyScheme();
    // On a client this may wait for the server, and what is clicked meanwhile counts.
    const QString info = ShownText(box_.Alarms().Info());
    isShowing_ = true;
    ShowCommands();
    ShowTabs();
    ShowConditions();
    ShowEdge();
    ShowStatus();
    ShowAlarmInfo(info);
    ShowFloating(sysLogWindow_, box_.Tabs().isSysLogWindow);
    ShowFloating(debugWindow_, box_.Tabs().isDebugWindow);
    if (debug_) debug_->Refresh();
    ShowTray();
    if (const QString title = ShownLine(box_.Title()); windowTitle() != title) setWindowTitle(title);
    isShowing_ = false;
}

// The setting can be changed at any time; the desktop's own colours are left alone until it is.
void MainWindow::ApplyScheme() {
    const int scheme = box_.Looks().ColorScheme;
    if (scheme == scheme_) return;
    scheme_ = scheme;
    ApplyColorScheme(scheme);
}

void MainWindow::ShowCommands() {
    for (int number = 0; number < kCommandCount; ++number) {
        QAction* action = actions_[static_cast<std::size_t>(number)];
        const CommandState& state = box_.StateOf(static_cast<Command>(number));
        action->setVisible(state.isVisible);
        action->setEnabled(state.isEnabled && state.isVisible);
        if (action->isCheckable()) action->setChecked(state.isChecked);
    }
    simulateMenu_->menuAction()->setVisible(box_.StateOf(Command::SimAlarm).isVisible);
    const bool isPressed = box_.StateOf(Command::ShowLast).isChecked;
    if (isPressed != showsLastPressed_) {
        showsLastPressed_ = isPressed;
        RenewIcons();
    }
}

void MainWindow::ShowTabs() {
    const TabStates& tabs = box_.Tabs();
    for (int number = 0; number < kTabCount; ++number) {
        const bool isVisible = tabs.isVisible[static_cast<std::size_t>(number)];
        if (pages_->isTabVisible(number) != isVisible) pages_->setTabVisible(number, isVisible);
    }
    const int current = static_cast<int>(tabs.current);
    if (pages_->currentIndex() != current) pages_->setCurrentIndex(current);
    const QString& text = filters_[static_cast<std::size_t>(current)];
    if (filter_->text() != text) filter_->setText(text);
    for (const Tab tab : {Tab::Unacked, Tab::Acked, Tab::IdCodes, Tab::Types, Tab::DataCodes}) {
        ListOf(tab)->SetEmptyText(ShownLine(box_.EmptyText(tab)));
    }
}

void MainWindow::ShowConditions() {
    conditions_->Show(box_.Wrong());
    const bool isToFlash = box_.IsToFlash();
    conditions_->Flash(isToFlash);
    if (isToFlash && !isFlashing_) QApplication::alert(this);
    isFlashing_ = isToFlash;
}

void MainWindow::ShowEdge() {
    const auto [first, last] = ListOf(Tab::Unacked)->VisibleRows();
    box_.Alarms().NoteVisible(first, last);
    edge_->Show(ShownLine(box_.Alarms().NewsText()), ShownLine(box_.Alarms().UndoText()));
}

void MainWindow::ShowAlarmInfo(const QString& text) {
    SetBoxText(*info_, text);
    const Text link = box_.Alarms().Link();
    link_->setVisible(!link.empty());
    link_->setToolTip(PlainToolTip(ShownLine(link)));
}

void MainWindow::SetStatusText(QLabel* label, const Text& text) {
    const QString shown = ShownLine(text);
    if (label->text() != shown) label->setText(shown);
    label->setVisible(!shown.isEmpty());
}

void MainWindow::ShowStatus() {
    const StatusTexts texts = box_.Status();
    const QString line = ShownLine(box_.StatusLine(box_.Tabs().current));
    if (line_->text() != line) line_->setText(line);
    SetStatusText(unacked_, texts.unacked);
    SetStatusText(byPriority_, texts.byPriority);
    SetStatusText(acked_, texts.acked);
    inService_->setText(WithoutMnemonics(ShownLine(texts.inService)));
    inService_->setVisible(!texts.inService.empty());
    SetStatusText(oldest_, texts.oldest);
    SetStatusText(user_, texts.user);
    SetStatusText(clock_, texts.clock);
    QFont font = oldest_->font();
    if (font.bold() != texts.isOverdue) {
        font.setBold(texts.isOverdue);
        oldest_->setFont(font);
        QPalette colors = clock_->palette();
        if (texts.isOverdue) colors.setColor(QPalette::WindowText, WarningColor(colors));
        oldest_->setPalette(colors);
    }
}

void MainWindow::ShowFloating(QWidget* window, bool isShown) {
    if (window && window->isVisible() != isShown) window->setVisible(isShown);
}

void MainWindow::ShowSelection(Tab tab) {
    const RowSelection& selection = box_.SelectionOf(tab);
    if (ListPane* list = ListOf(tab)) list->SelectKeys(selection.keys, selection.current);
}

void MainWindow::Reveal(Tab tab, const Text& key) {
    if (ListPane* list = ListOf(tab)) list->Reveal(key);
}

void MainWindow::TakeSelection(Tab tab) {
    const ListPane* list = ListOf(tab);
    box_.Select(tab, {list->SelectedKeys(), list->CurrentKey()});
}

// --- Acting

void MainWindow::SelectAllRows(Tab tab) {
    ListOf(tab)->selectAll();
}

void MainWindow::PutOnClipboard(const Text& text) {
    QApplication::clipboard()->setText(ToQString(text));
}

void MainWindow::ShowOnce(QDialog* window) {
    window->setAttribute(Qt::WA_DeleteOnClose);
    window->show();
}

void MainWindow::ShowAbout() {
    ShowOnce(new AboutDialog(needs_.side.about, captions_, this));
}

void MainWindow::ShowFindings() {
    if (!needs_.side.findings || needs_.side.findings->Found().empty()) return;
    QString title = ShownLine(box_.Title());
    for (const Condition& condition : box_.Wrong().Rows()) {
        if (condition.kind == ConditionKind::FaultsInFiles) title = ShownLine(condition.sentence);
    }
    ShowOnce(
        new FindingsWindow(needs_.side.findings->Found(), title, captions_, needs_.side.openFinding, this));
}

void MainWindow::ClearFilter(Tab tab) {
    box_.ShowTab(tab);
    filter_->clear();
    ListOf(tab)->setFocus();
}

void MainWindow::ChoosePrinterFont() {
    const auto chosen = [this](const PrinterSettings& look) {
        needs_.side.printerLook = look;
        SavePrinterFont(needs_.files, look);
    };
    ShowOnce(new PrinterFontDialog(needs_.side.printerLook, captions_, chosen, this));
}

void MainWindow::Zoom(int step) {
    const int own = ownFontSize_ > 0 ? ownFontSize_ : font().pointSize();
    if (step != 0) fontSize_ = qBound(kSmallestFont, (fontSize_ > 0 ? fontSize_ : own) + step, kLargestFont);
    // All windows follow, and the columns with them.
    QFont sized = QApplication::font();
    if (ownFontSize_ <= 0) ownFontSize_ = sized.pointSize();
    const int wanted = fontSize_ > 0 ? fontSize_ : ownFontSize_;
    if (wanted > 0) sized.setPointSize(wanted);
    if (sized != QApplication::font()) QApplication::setFont(sized);
    for (ListPane* list : lists_) {
        if (list) list->SetFontSize(fontSize_);
    }
}

void MainWindow::ToggleFullScreen() {
    setWindowState(windowState() ^ Qt::WindowFullScreen);
}

void MainWindow::NextPane() {
    std::vector<QWidget*> panes = {tree_, ListOf(box_.Tabs().current), info_};
    if (beside_ && beside_->isVisible()) panes.push_back(beside_);
    const QWidget* focused = QApplication::focusWidget();
    std::size_t next = 1;
    for (std::size_t i = 0; i < panes.size(); ++i) {
        const bool isHere = panes[i] && focused && (panes[i] == focused || panes[i]->isAncestorOf(focused));
        if (isHere) next = (i + 1) % panes.size();
    }
    if (panes[next]) panes[next]->setFocus(Qt::TabFocusReason);
}

}  // namespace nordkeep
