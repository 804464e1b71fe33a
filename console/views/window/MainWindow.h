#pragma once

#include "console/boxes/AboutText.h"
#include "console/print/PrintDocument.h"
#include "console/views/lists/RowAdapter.h"
#include "console/window/FindingsSource.h"
#include "console/window/MainBox.h"
#include "platform/UserStore.h"

#include <QtWidgets/QMainWindow>

#include <array>
#include <functional>
#include <memory>
#include <optional>

class QDialog;
class QLabel;
class QLineEdit;
class QMenu;
class QPlainTextEdit;
class QPushButton;
class QSplitter;
class QSystemTrayIcon;
class QTabWidget;

namespace nordkeep {

class ConditionStrip;
class EdgeStrip;
class DebugPane;
class ListPane;
class TreePane;

/// How the window starts.
struct MainWindowStart {
    bool isTopmost = false;
    bool isMaximised = false;
    bool isMinimised = false;
};

/// What the windows show that the main window makes for the moment.
struct SideModels {
    AboutText about;
    PrinterSettings& printerLook;                       // changed by the choice of a font
    const FindingsSource* findings = nullptr;           // none: the files are not checked
    std::function<void(const Finding&)> openFinding{};  // leads to its place
};

/// The operator's main window. It shows what MainBox holds and decides nothing.
class MainWindow final : public QMainWindow, public MainBoxView {
 public:
    struct Needs {
        MainBox& box;
        Settings& files;   // column widths
        UserStore& store;  // geometry and text size
        SideModels side;
    };
    explicit MainWindow(const Needs& needs);
    ~MainWindow() override;

    void ShowAtStart(const MainWindowStart& start);
    /// Geometry and widths, at a clean stop.
    void SaveState();
    /// The program ends: the window closes without asking.
    void AllowClose() { mayClose_ = true; }

    // MainBoxView
    void SelectAllRows(Tab tab) override;
    void PutOnClipboard(const Text& text) override;
    void ShowKeys() override;
    void ShowAbout() override;
    void ShowFindings() override;
    void ClearFilter(Tab tab) override;
    void ChoosePrinterFont() override;
    void ShowState() override;
    void ShowSelection(Tab tab) override;
    void Reveal(Tab tab, const Text& key) override;
    void PopUp() override;

    /// What stands beside the lists and can be gone to by F6 while it is visible.
    void SetBeside(QWidget* pane) { beside_ = pane; }

    QAction* ActionOf(Command command) const { return actions_[static_cast<std::size_t>(command)]; }
    ListPane* ListOf(Tab tab) const { return lists_[static_cast<std::size_t>(tab)]; }

 protected:
    void closeEvent(QCloseEvent* event) override;
    void changeEvent(QEvent* event) override;

 private:
    // Building
    void AddActions();
    void AddMenus();
    void AddToolBar();
    void AddCentre();
    QWidget* NewTreePart();
    QWidget* NewListPart();
    QWidget* NewInfoPart();
    void AddTabs();
    ListPane* NewList(Tab tab, TextView section);
    void AddFilterBox();
    void AddStatusBar();
    QWidget* NewServiceButton();
    void AddKeys();
    void AddTray();
    void AddFloatingWindows();
    void AddKey(const char* keys, std::function<void()> act);

    // Showing
    void ApplyScheme();
    void ShowCommands();
    void ShowTabs();
    void ShowAlarmInfo(const QString& text);
    void ShowConditions();
    void ShowEdge();
    void ShowStatus();
    void ShowFloating(QWidget* window, bool isShown);
    void ShowTray();
    void RenewIcons();
    void SetStatusText(QLabel* label, const Text& text);

    // Acting
    /// Shows a window that is made for the moment and goes when it is closed.
    void ShowOnce(QDialog* window);
    void PopUpFor(Tab tab, QPoint place);
    void PopUpForLine(QPoint place);
    void PopUpForObject(QPoint place);
    void FillCodeMenu(QMenu* menu, Command command);
    void FillMapMenu(QMenu* menu);
    /// The page at this place of those that are shown, from 0.
    std::optional<Tab> ShownPage(int number) const;
    void NextPane();
    void Zoom(int step);
    void ToggleFullScreen();
    void TakeSelection(Tab tab);
    void RestoreGeometry();

    Needs needs_;
    MainBox& box_;
    const Captions& captions_;
    std::array<QAction*, static_cast<std::size_t>(kCommandCount)> actions_{};
    std::array<std::unique_ptr<RowAdapter>, kTabCount> adapters_{};
    std::array<ListPane*, kTabCount> lists_{};
    QMenu* simulateMenu_ = nullptr;
    QMenu* mapMenu_ = nullptr;
    QToolBar* toolBar_ = nullptr;
    QTabWidget* pages_ = nullptr;
    TreePane* tree_ = nullptr;
    ConditionStrip* conditions_ = nullptr;
    EdgeStrip* edge_ = nullptr;
    QLineEdit* filter_ = nullptr;
    QPlainTextEdit* info_ = nullptr;
    QPushButton* link_ = nullptr;
    DebugPane* debug_ = nullptr;
    QWidget* beside_ = nullptr;
    QSplitter* sides_ = nullptr;   // tree and lists
    QSplitter* halves_ = nullptr;  // lists and the alarm's text
    QLabel* line_ = nullptr;
    QLabel* unacked_ = nullptr;
    QLabel* byPriority_ = nullptr;
    QLabel* acked_ = nullptr;
    QPushButton* inService_ = nullptr;
    QLabel* oldest_ = nullptr;
    QLabel* user_ = nullptr;
    QLabel* clock_ = nullptr;
    QWidget* sysLogWindow_ = nullptr;
    QWidget* debugWindow_ = nullptr;
    QSystemTrayIcon* tray_ = nullptr;
    QMenu* trayMenu_ = nullptr;
    Tray shownTray_{};
    std::array<QString, kTabCount> filters_{};  // what stands in the search field of each page
    int fontSize_ = 0;
    int ownFontSize_ = 0;  // of the desktop
    int scheme_ = 0;
    bool isFlashing_ = false;
    bool mayClose_ = false;
    bool isShowing_ = false;  // changes of widgets come from the model
    bool showsLastPressed_ = false;
};

}  // namespace nordkeep
