#pragma once

#include "console/views/lists/RowAdapter.h"
#include "console/window/DebugPage.h"

#include <QtWidgets/QWidget>

class QCheckBox;
class QComboBox;
class QGridLayout;
class QPushButton;

namespace nordkeep {

class ListPane;

/// The debug page: the bytes of the watched ports, and what can be sent to one of them.
class DebugPane final : public QWidget {
 public:
    DebugPane(DebugPage& panel, const Captions& captions, QWidget* parent = nullptr);

    /// Shows the present state of the controls.
    void Refresh();
    ListPane& List() { return *list_; }

 private:
    void AddWatchBoxes();
    void AddSendLine(QLayout& layout);
    QCheckBox* NewBox(int caption, std::function<void(bool)> set);

    DebugPage& panel_;
    const Captions& captions_;
    RowAdapter rows_;
    ListPane* list_ = nullptr;
    QGridLayout* watch_ = nullptr;
    QComboBox* ports_ = nullptr;
    QComboBox* message_ = nullptr;
    QPushButton* send_ = nullptr;
    QPushButton* save_ = nullptr;
    QCheckBox* ignore_ = nullptr;
    std::vector<QCheckBox*> watchBoxes_{};
};

}  // namespace nordkeep
