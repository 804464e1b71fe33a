#pragma once

#include "console/views/lists/ViewParts.h"
#include "console/window/SettingsList.h"

class QCheckBox;
class QLineEdit;
class QTableWidget;

namespace nordkeep {

/// The settings in force, for reading.
class SettingsWindow final : public QDialog {
 public:
    SettingsWindow(const SettingsList& settings, const Captions& captions, QWidget* parent = nullptr);

 private:
    void Fill(const SettingsList& settings, const Captions& captions);
    void Filter();

    QLineEdit* search_ = nullptr;
    QCheckBox* onlyChanged_ = nullptr;
    QTableWidget* table_ = nullptr;
};

}  // namespace nordkeep
