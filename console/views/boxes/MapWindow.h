#pragma once

#include "console/boxes/MapBox.h"
#include "console/views/lists/ViewParts.h"

class QScrollArea;

namespace nordkeep {

/// The window of the map.
class MapWindow final : public QDialog, public WindowView {
 public:
    MapWindow(MapBox& map, const Captions& captions, QWidget* parent = nullptr);

    void Show(OpenedBy by) override;
    void Refresh() override;
    void Close() override { hide(); }

 protected:
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void reject() override { map_.Close(); }
    bool eventFilter(QObject* watched, QEvent* event) override;

 private:
    class Canvas;

    QLayout* NewButtons(const Captions& captions);
    void LoadPicture();
    void FindAlarmCenter();
    void ScrollBy(int x, int y);
    void Zoom(char key);
    void MoveMouse(const QMouseEvent& event);
    bool TurnWheel(const QWheelEvent& event);

    MapBox& map_;
    QScrollArea* scroll_ = nullptr;
    Canvas* canvas_ = nullptr;
    QLabel* failure_ = nullptr;
    QLabel* status_ = nullptr;
    NoticeBar* other_ = nullptr;
    QString shownOther_{};
    QPushButton* center_ = nullptr;
    QPoint draggedFrom_{};  // on the screen
    unsigned shownGeneration_ = 0;
};

}  // namespace nordkeep
