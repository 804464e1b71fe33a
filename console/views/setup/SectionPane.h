#pragma once

#include "console/setup/SetupSection.h"

#include <QtWidgets/QWidget>

#include <functional>

namespace nordkeep {

/// The widget of a section of the set-up.
class SectionPane : public QWidget, public WindowView {
 public:
    /// What shows more than this page, such as the buttons of the window.
    std::function<void()> onChange = [] {};
    /// Comes behind this widget when somebody goes through the window by Tab.
    virtual void FollowInTabs(QWidget* widget) = 0;
    void Show(OpenedBy) override { Refresh(); }
    void Close() override {}
};

}  // namespace nordkeep
