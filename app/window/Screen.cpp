#include "app/window/Screen.h"

#include "console/boxes/AboutText.h"
#include "console/views/boxes/CommentWindow.h"
#include "console/views/boxes/EditorWindow.h"
#include "console/views/boxes/LoginDialog.h"
#include "console/views/boxes/MapWindow.h"
#include "console/views/boxes/PeriodDialog.h"
#include "console/views/boxes/PictureWindow.h"
#include "console/views/boxes/ReconnectDialog.h"
#include "console/views/boxes/SimulationDialog.h"
#include "console/views/editors/ObjectFormWindow.h"
#include "console/views/editors/RowsPane.h"
#include "console/views/editors/SetsPane.h"
#include "console/views/history/HistoryWindow.h"
#include "console/views/history/ShiftWindow.h"
#include "console/views/setup/LinesPane.h"
#include "console/views/setup/SetupWindow.h"
#include "console/views/window/CardWindow.h"
#include "console/views/window/FindWindow.h"

#include <QtGui/QShortcut>
#include <QtWidgets/QApplication>

#include <algorithm>

namespace nordkeep {
namespace {

/// Makes the window of a model and sets it behind the model.
template <class Window, class Model, class Words>
std::unique_ptr<QDialog> WindowOf(Model& model, const Words& words, QWidget* parent) {
    auto window = std::make_unique<Window>(model, words, parent);
    model.SetView(*window);
    return window;
}

}  // namespace

Screen::Screen(Centre& centre, Foundation& foundation, QtDialogs* dialogs)
    : centre_(centre),
      foundation_(foundation),
      dialogs_(dialogs),
      printer_({.captions = centre.Place().Words(),
                .clock = foundation.Platform().clock,
                .log = foundation.Log(),
                .parent = [this] { return &window_; }}),
      window_(
          {.box = centre.Place().Main(),
           .files = foundation.Files(),
           .store = store_,
           .side = {.about = MakeAboutText(centre.Place().Words(), NORDKEEP_VERSION,
                                           FromUtf8(foundation.DataFolder().Root()), foundation.CopyRole()),
                    .printerLook = centre.Place().PrinterLook(),
                    .findings = &centre.Check(),
                    .openFinding = [this](const Finding& finding) { OpenFinding(finding); }}}) {
    SetBehindModels();
    if (dialogs_) {
        dialogs_->UseCaptions(centre.Place().Words());
        dialogs_->UseParent([this] { return &window_; });
        dialogs_->UseSilence([this] { centre_.Place().Main().Run(Command::FileSoundStop); });
    }
    centre.Place().SetScreen(this);
}

Screen::~Screen() {
    centre_.Place().SetScreen(nullptr);
}

void Screen::OpenFinding(const Finding& finding) {
    Text path = finding.file;
    std::ranges::replace(path, '/', '\\');
    // A folder is nothing to edit, and what a client's editor shows is its server's.
    if (foundation_.CopyRole() == Role::Client) return;
    if (!StampOf(foundation_.DataFolder().Resolve(path)).Exists()) return;
    centre_.Place().Editor().Open({.path = path, .title = finding.file, .line = finding.line});
}

void Screen::SetBehindModels() {
    Workplace& place = centre_.Place();
    const Captions& words = place.Words();
    auto sheet = std::make_unique<CommentWindow>(place.Sheet(), words, &window_);
    place.Sheet().SetView(*sheet);
    sheetDock_ = new SheetDock({.window = window_,
                                .sheet = *sheet,
                                .settings = place.Main().Looks(),
                                .store = store_,
                                .keep = [this](bool isBeside) { KeepSheetPlace(isBeside); }});
    sheets_.push_back(std::move(sheet));
    sheets_.push_back(WindowOf<MapWindow>(place.Map(), words, &window_));
    sheets_.push_back(WindowOf<LoginDialog>(place.Login(), words, &window_));
    // It blocks the main window, whose key this is.
    QObject::connect(new QShortcut(Qt::Key_F8, sheets_.back().get()), &QShortcut::activated, &window_,
                     [this] { centre_.Place().Main().Run(Command::FileSoundStop); });
    sheets_.push_back(WindowOf<PeriodDialog>(place.Period(), words, &window_));
    sheets_.push_back(WindowOf<EditorWindow>(place.Editor(), words, &window_));
    auto setup = std::make_unique<SetupWindow>(place.Setup(), words, &window_);
    place.Setup().SetView(*setup);
    setup->AddPane(place.Lines(), new LinesPane(place.Lines(), words));
    setup->AddPane(place.Editors().Sets(), new SetsPane(place.Editors().Sets(), words));
    for (RowsBox* rows : place.Editors().All()) setup->AddPane(*rows, new RowsPane(*rows, words));
    sheets_.push_back(std::move(setup));
    sheets_.push_back(WindowOf<ObjectFormWindow>(place.Editors().ObjectForm(), words, &window_));
    sheets_.push_back(std::make_unique<HistoryWindow>(place.History(), place.Report(), &window_));
    sheets_.push_back(std::make_unique<ShiftWindow>(place.Shift(), &window_));
    sheets_.push_back(std::make_unique<CardWindow>(place.Card(), &window_));
    sheets_.push_back(std::make_unique<FindWindow>(place.Main().Find(), &window_));
    sheets_.push_back(WindowOf<SimulationDialog>(centre_.Simulation(), words, &window_));
    sheets_.push_back(WindowOf<ReconnectDialog>(place.Reconnect(), foundation_.Texts(), &window_));
    auto picture = std::make_unique<PictureWindow>(place.Picture(), words);
    place.Picture().SetView(*picture);
    picture_ = std::move(picture);
}

void Screen::Show() {
    const CommandLine& switches = foundation_.Switches();
    window_.ShowAtStart(
        {.isTopmost = switches.topMost, .isMaximised = switches.maximize, .isMinimised = switches.minimize});
}

void Screen::KeepSheetPlace(bool isBeside) {
    foundation_.Files().WriteIni("General", "CommentSheetPlace", isBeside ? "1" : "0");
    centre_.Place().RenewSettings();
}

void Screen::PrepareForEnd() {
    if (dialogs_) dialogs_->CloseQuestion();
    sheetDock_->SaveWidth();
    window_.SaveState();
    window_.AllowClose();
    picture_->hide();
    window_.hide();
}

void Screen::Beep() {
    QApplication::beep();
}

}  // namespace nordkeep
