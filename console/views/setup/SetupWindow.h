#pragma once

#include "console/setup/SetupBox.h"
#include "console/views/setup/FieldPane.h"
#include "console/views/setup/SectionPane.h"

class QLineEdit;
class QListWidget;
class QStackedWidget;

namespace nordkeep {

/// The window of the set-up: pages on the left, a search over all of them, the fields of one on the right.
class SetupWindow final : public QDialog, public WindowView {
 public:
    SetupWindow(SetupBox& box, const Captions& captions, QWidget* parent = nullptr);

    /// The pane of a section; the window takes it over.
    template <class Section>
    void AddPane(Section& section, SectionPane* pane) {
        section.SetView(*pane);
        AddPane(&section, pane);
    }

    void Show(OpenedBy by) override;
    void Refresh() override;
    void Close() override { hide(); }

 protected:
    void reject() override;
    void closeEvent(QCloseEvent* event) override;

 private:
    /// A section and its widget.
    struct Side {
        const SetupSection* section = nullptr;
        SectionPane* pane = nullptr;
    };

    void AddPane(const SetupSection* section, SectionPane* pane);
    QWidget* PaneOf(const SetupSection* section) const;
    QWidget* NewLeft();
    QWidget* NewRight();
    void AddKeys();
    void ShowPages();

    SetupBox& box_;
    const Captions& captions_;
    QLineEdit* search_ = nullptr;
    QListWidget* pages_ = nullptr;
    QStackedWidget* sides_ = nullptr;
    std::vector<Side> panes_{};
    FieldPane* fields_ = nullptr;
    NoticeBar* notice_ = nullptr;
    QPushButton* revert_ = nullptr;
    QPushButton* apply_ = nullptr;
};

}  // namespace nordkeep
