#pragma once

#include "console/window/Conditions.h"

#include <QtCore/QTimer>
#include <QtWidgets/QWidget>

#include <functional>
#include <vector>

namespace nordkeep {

/// The strip above the lists that says what is wrong. Its place is always there, so that nothing moves when
/// something begins or ends; what does not fit stands behind "more". Nothing closes an entry but its cause's
/// end.
class ConditionStrip final : public QWidget {
 public:
    explicit ConditionStrip(const Captions& captions, QWidget* parent = nullptr);
    void Show(const Conditions& conditions);
    /// Turns over twice a second while somebody is to look up.
    void Flash(bool isOn);
    /// What a click or Enter on an entry does.
    std::function<void(const Condition&)> onOpen = [](const Condition&) {};
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

 protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    bool event(QEvent* event) override;

 private:
    struct Entry {
        QRect box{};
        std::size_t row = 0;
    };

    void Arrange();
    /// The entry at a place; the number of entries for "more", -1 for none.
    int EntryAt(QPoint place) const;
    void Open(int entry);
    void OpenMore();
    void PaintEntry(QPainter& painter, const Entry& entry, bool isCurrent) const;
    void PaintWord(QPainter& painter, const QRect& box, const QString& text) const;
    int Stops() const { return static_cast<int>(entries_.size()) + (more_.isValid() ? 1 : 0); }

    const Captions& captions_;
    std::vector<Condition> rows_{};
    std::vector<QString> words_{};  // of each row's weight
    QString allWell_{};
    std::vector<Entry> entries_{};  // that fit
    QRect more_{};
    int current_ = 0;  // where the keys are
    QTimer flash_{};
    bool isTurned_ = false;
};

}  // namespace nordkeep
