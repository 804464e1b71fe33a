#pragma once

#include "console/lists/ListColumns.h"
#include "console/lists/RowFinder.h"
#include "console/views/lists/RowAdapter.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QTimer>
#include <QtWidgets/QTableView>

#include <optional>
#include <utility>

namespace nordkeep {

class RowDelegate;

/// A list of rows on the screen. Selection and scroll place stay with their rows whatever comes and goes.
class ListPane final : public QTableView {
 public:
    explicit ListPane(RowAdapter& rows, QWidget* parent = nullptr);

    /// Widths are taken from here, and kept here when somebody changes them.
    void UseWidths(const ColumnWidths& widths);
    void SaveWidths();
    /// The last column takes what is left of the width.
    void StretchLastColumn();
    /// The list follows its end unless somebody has scrolled up.
    void FollowEnd(bool isOn);
    void MarkFirstCellOnly(bool isOn);
    /// In the middle of a list without rows.
    void SetEmptyText(const QString& text);
    /// Points; 0 is the font's own size.
    void SetFontSize(int points);

    RowModel& Rows() const { return rows_.Rows(); }
    std::vector<Text> SelectedKeys() const;
    Text CurrentKey() const;
    /// Selects rows without telling.
    void SelectKeys(const std::vector<Text>& keys, const Text& current);
    void Reveal(const Text& key);
    /// Selects the next row that holds the words, a slice at a time.
    void FindNext(const QString& words);
    /// Letters that are typed lead to the row that begins with them.
    void FollowTyping(bool isOn) { followsTyping_ = isOn; }
    /// The first and the last row that can be seen whole; the last is before the first when there is none.
    std::pair<int, int> VisibleRows() const;

    std::function<void()> onSelection = [] {};
    std::function<void()> onActivate = [] {};
    std::function<void()> onScroll = [] {};
    /// At a place of the screen.
    std::function<void(QPoint)> onPopup = [](QPoint) {};

 protected:
    void keyPressEvent(QKeyEvent* event) override;
    void keyboardSearch(const QString& letters) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;
    void selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) override;

 private:
    void SetUpHeaders();
    void ApplyWidths();
    int Scaled(int width) const;
    int Unscaled(int width) const;
    int DefaultWidth(int section) const;
    void ApplyRowHeight();
    void ShowSorting();
    void RoundBegins();
    void RoundEnds();
    void Notify();
    void LookFor(const Text& wanted, RowFinder::By by, int from);
    void LookOn();

    RowAdapter& rows_;
    RowDelegate* delegate_ = nullptr;
    std::optional<ColumnWidths> widths_{};
    QTimer widthTimer_{};
    QTimer findTimer_{};
    QElapsedTimer sinceLetter_{};
    QString letters_{};  // typed one soon after the other
    RowFinder finder_{};
    bool followsTyping_ = false;
    double standardSize_ = 1;  // of the desktop's text, points
    double scale_ = 1;         // of the text to the desktop's
    bool isSettingWidths_ = false;
    bool followsEnd_ = false;
    bool isInRound_ = false;
    bool isSilent_ = false;
    bool wasReset_ = false;
    // Before a round of changes:
    bool wasAtEnd_ = false;
    Text topKey_{};
    std::vector<Text> keptKeys_{};
    Text keptCurrent_{};
    QString emptyText_{};
};

}  // namespace nordkeep
