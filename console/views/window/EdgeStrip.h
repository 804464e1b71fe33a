#pragma once

#include <QtWidgets/QWidget>

#include <functional>

class QToolButton;

namespace nordkeep {

/// The strip below the lists: new alarms that cannot be seen, and the end that can still be taken back. Its
/// place is always there, so that no row moves.
class EdgeStrip final : public QWidget {
 public:
    explicit EdgeStrip(QWidget* parent = nullptr);

    /// Empty texts show nothing.
    void Show(const QString& news, const QString& undo);

    std::function<void()> onNews = [] {};
    std::function<void()> onUndo = [] {};

 protected:
    void changeEvent(QEvent* event) override;

 private:
    void FitHeight();
    void ColorNews();

    QToolButton* news_ = nullptr;
    QToolButton* undo_ = nullptr;
};

}  // namespace nordkeep
