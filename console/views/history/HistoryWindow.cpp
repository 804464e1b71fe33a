#include "console/views/history/HistoryWindow.h"

#include "console/views/history/ReportPane.h"
#include "console/views/history/SearchPane.h"
#include "console/views/lists/ListPane.h"
#include "console/views/lists/ViewParts.h"

#include <QtWidgets/QBoxLayout>
#include <QtWidgets/QTabWidget>

namespace nordkeep {
namespace {

constexpr int kCaptionTitle = 5482;
constexpr int kCaptionSearch = 5483;
constexpr int kCaptionReport = 5484;

}  // namespace

HistoryWindow::HistoryWindow(HistoryBox& history, ReportBox& report, QWidget* parent)
    : QDialog(parent), history_(history), report_(report) {
    setModal(false);
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    search_ = new SearchPane(history_);
    figures_ = new ReportPane(report_, history_.Words());
    pages_ = new QTabWidget;
    pages_->setDocumentMode(true);
    pages_->addTab(search_, CaptionText(history_.Words(), kCaptionSearch));
    pages_->addTab(figures_, CaptionText(history_.Words(), kCaptionReport));
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(pages_);
    connect(pages_, &QTabWidget::currentChanged, this, [this] { Refresh(); });
    // Both tell this window.
    history_.SetView(this);
    report_.SetView(this);
    resize(1120, 640);
    Refresh();
}

HistoryWindow::~HistoryWindow() {
    history_.SetView(nullptr);
    report_.SetView(nullptr);
}

void HistoryWindow::Show(OpenedBy by) {
    search_->Fill();
    Refresh();
    KeepOnScreen(*this);
    BringToFront(*this, by == OpenedBy::Operator);
    search_->List().setFocus();
}

void HistoryWindow::Refresh() {
    const bool isSearch = pages_->currentWidget() == search_;
    setWindowTitle(isSearch ? ShownLine(history_.Title()) : CaptionText(history_.Words(), kCaptionTitle));
    search_->Refresh();
    figures_->Refresh();
}

void HistoryWindow::ShowReport() {
    pages_->setCurrentWidget(figures_);
}

}  // namespace nordkeep
