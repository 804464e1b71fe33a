#pragma once

#include "console/boxes/ReconnectBox.h"
#include "console/views/lists/ViewParts.h"

namespace nordkeep {

/// Tells that the server is gone. It stands on top and holds nothing up: what was being typed can be kept.
class ReconnectDialog final : public QDialog, public WindowView {
 public:
    ReconnectDialog(ReconnectBox& box, const Language& language, QWidget* parent = nullptr);

    void Show(OpenedBy by) override;
    void Refresh() override;
    void Close() override { hide(); }

 protected:
    // Only the connection, or the end of the program, takes it away.
    void reject() override {}
    void closeEvent(QCloseEvent* event) override;

 private:
    ReconnectBox& box_;
    QLabel* label_ = nullptr;
    QLabel* countdown_ = nullptr;
    QPushButton* reconnect_ = nullptr;
};

}  // namespace nordkeep
