#pragma once

#include "console/history/ReportBox.h"

#include <QtWidgets/QWidget>

#include <array>

class QComboBox;
class QLabel;
class QPushButton;
class QTreeWidget;

namespace nordkeep {

class ChartPane;
class NoticeBar;

/// A report: charts above, tables below.
class ReportPane final : public QWidget {
 public:
    ReportPane(ReportBox& report, const Captions& captions, QWidget* parent = nullptr);
    void Refresh();

 private:
    QWidget* NewTop();
    void FillTables();
    void AskExport();

    ReportBox& report_;
    const Captions& captions_;
    QComboBox* usual_ = nullptr;
    std::array<ChartPane*, 2> charts_{};
    QTreeWidget* tables_ = nullptr;
    NoticeBar* trouble_ = nullptr;
    QLabel* notice_ = nullptr;
    QPushButton* make_ = nullptr;
    QPushButton* save_ = nullptr;
    QPushButton* print_ = nullptr;
    AlarmFigures shown_{};
};

}  // namespace nordkeep
