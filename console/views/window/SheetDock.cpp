#include "console/views/window/SheetDock.h"

#include <QtGui/QShortcut>

namespace nordkeep {
namespace {

constexpr int kRoomyWidth = 1400;  // px of the main window
constexpr int kUsualWidth = 440;   // px of the sheet
const char kWidthKey[] = "MainBox_SheetWidth";

}  // namespace

SheetDock::SheetDock(const Needs& needs) : QDockWidget(&needs.window), needs_(needs) {
    setObjectName(QStringLiteral("SheetDock"));
    setFeatures(QDockWidget::NoDockWidgetFeatures);
    setTitleBarWidget(new QWidget(this));  // the sheet has a heading of its own
    needs_.window.addDockWidget(Qt::RightDockWidgetArea, this);
    hide();
    needs_.sheet.onShow = [this](bool takesFocus) { ShowSheet(takesFocus); };
    needs_.sheet.onHide = [this] { HideSheet(); };
    needs_.sheet.onMove = [this] { Move(); };
    // From wherever in the main window the operator is.
    auto* move = new QShortcut(Qt::SHIFT | Qt::Key_F6, &needs_.window);
    connect(move, &QShortcut::activated, this, [this] {
        if (needs_.sheet.isVisible()) Move();
    });
}

bool SheetDock::IsWanted() const {
    const Text& place = needs_.settings.CommentSheetPlace;
    if (!TrimBlanks(place).empty()) return IsTrue(place);
    return needs_.window.width() >= kRoomyWidth;
}

void SheetDock::Place(bool isBeside) {
    if (isBeside == isBeside_) return;
    isBeside_ = isBeside;
    CommentWindow& sheet = needs_.sheet;
    sheet.SetNarrow(isBeside);
    // A dialog that has been moved does not look for a place of its own.
    sheet.setAttribute(Qt::WA_Moved, isBeside);
    if (isBeside) {
        sheet.setParent(this, Qt::Widget);
        setWidget(&sheet);
    } else {
        setWidget(nullptr);
        sheet.setParent(&needs_.window,
                        Qt::Dialog | Qt::WindowMaximizeButtonHint | Qt::WindowCloseButtonHint);
        sheet.resize(kSheetWidth, kSheetHeight);
    }
    needs_.window.SetBeside(isBeside ? &sheet : nullptr);
}

void SheetDock::ShowSheet(bool takesFocus) {
    if (!needs_.sheet.isVisible()) Place(IsWanted());
    if (!isBeside_) return BringToFront(needs_.sheet, takesFocus);
    const bool wasHidden = isHidden();
    needs_.sheet.show();
    show();
    const int width = needs_.store.Read(kWidthKey).value_or(kUsualWidth);
    if (wasHidden) needs_.window.resizeDocks({this}, {qBound(200, width, 4000)}, Qt::Horizontal);
    if (!takesFocus) return;
    needs_.window.activateWindow();
    needs_.sheet.setFocus();
}

void SheetDock::HideSheet() {
    SaveWidth();
    needs_.sheet.hide();
    hide();
}

// What has been typed goes with it.
void SheetDock::Move() {
    const bool isBeside = !isBeside_;
    HideSheet();
    needs_.keep(isBeside);
    Place(isBeside);
    ShowSheet(true);
}

void SheetDock::SaveWidth() {
    if (isBeside_ && !isHidden()) needs_.store.Write(kWidthKey, width());
}

}  // namespace nordkeep
