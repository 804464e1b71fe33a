#pragma once

#include "console/history/ReportBox.h"

#include <QtWidgets/QDialog>

class QTabWidget;

namespace nordkeep {

class ReportPane;
class SearchPane;

/// History and reports, each on a page of its own.
class HistoryWindow final : public QDialog, public WindowView {
 public:
    HistoryWindow(HistoryBox& history, ReportBox& report, QWidget* parent = nullptr);
    ~HistoryWindow() override;

    void Show(OpenedBy by) override;
    void Refresh() override;
    void Close() override { hide(); }
    /// Brings the page of the reports up.
    void ShowReport();

 private:
    HistoryBox& history_;
    ReportBox& report_;
    QTabWidget* pages_ = nullptr;
    SearchPane* search_ = nullptr;
    ReportPane* figures_ = nullptr;
};

}  // namespace nordkeep
