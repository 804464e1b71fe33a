#pragma once

#include "console/boxes/MapGeometry.h"
#include "console/lists/Captions.h"

#include <QtGui/QPixmap>
#include <QtWidgets/QDialog>

#include <functional>

class QScrollArea;

namespace nordkeep {

class PlaceCanvas;

/// A map on which somebody shows the place of an object, with the mouse or with the arrows.
class PlaceDialog final : public QDialog {
 public:
    /// `picture` is the file of the map; `onTake` gets the place, in pixels of the picture.
    PlaceDialog(const Text& picture, std::optional<MapPoint> place, const Captions& captions,
                QWidget* parent);

    std::function<void(MapPoint)> onTake = [](MapPoint) {};

 protected:
    void keyPressEvent(QKeyEvent* event) override;
    void showEvent(QShowEvent* event) override;

 private:
    void Zoom(int percent);
    void Move(int x, int y);
    void Take();
    void ShowCross();

    QPixmap picture_{};
    MapPoint place_{};
    int zoom_ = 100;
    PlaceCanvas* canvas_ = nullptr;
    QScrollArea* area_ = nullptr;
};

}  // namespace nordkeep
