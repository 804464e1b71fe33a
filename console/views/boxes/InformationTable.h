#pragma once

#include "console/lists/ObjectForms.h"

#include <QtWidgets/QTableWidget>

#include <functional>

namespace nordkeep {

/// The information of an object in two columns. Enter or a double click follows where a value leads, Ctrl+C
/// copies it.
class InformationTable final : public QTableWidget {
 public:
    InformationTable();

    void ShowRows(const std::vector<InformationRow>& rows);
    /// What was done with a value, to be told: opened or not, and copied.
    std::function<void(const Text& value, bool isOpened)> onLink = [](const Text&, bool) {};
    std::function<void(const Text& value)> onCopy = [](const Text&) {};

 protected:
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

 private:
    /// The captions as wide as they are, the rest for the values; each row as high as its text.
    void FitCells();
    int TextHeight(const QTableWidgetItem* item, int width) const;
    void Follow(int row);
    void CopyValue(int row);

    std::vector<InformationRow> rows_{};
};

/// Opens an address of the desktop; without a program for it, or for any other address, false.
bool OpenLink(const std::string& link);
/// Puts a text on the clipboard.
void PutOnClipboard(const Text& text);

}  // namespace nordkeep
