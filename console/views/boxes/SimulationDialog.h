#pragma once

#include "console/boxes/SimulationBox.h"
#include "console/views/lists/ViewParts.h"

class QComboBox;
class QLineEdit;
class QSpinBox;

namespace nordkeep {

/// Asks for an alarm that is to be made.
class SimulationDialog final : public QDialog, public WindowView {
 public:
    SimulationDialog(SimulationBox& simulation, const Captions& captions, QWidget* parent = nullptr);

    void Show(OpenedBy by) override;
    void Refresh() override {}
    void Close() override { hide(); }

 protected:
    void reject() override { simulation_.Close(); }
    void closeEvent(QCloseEvent* event) override;

 private:
    void Raise();

    SimulationBox& simulation_;
    const Captions& captions_;
    QComboBox* port_ = nullptr;
    QSpinBox* protocol_ = nullptr;
    QLineEdit* alarmCode_ = nullptr;
    QLineEdit* extraText_ = nullptr;
    QLineEdit* prio_ = nullptr;
    QLineEdit* type_ = nullptr;
};

}  // namespace nordkeep
