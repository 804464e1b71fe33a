#pragma once

#include "console/views/lists/ViewParts.h"
#include "console/views/print/PageLayout.h"

#include <functional>

namespace nordkeep {

/// Shows the pages of a document before they are printed.
class PreviewWindow final : public QDialog {
 public:
    PreviewWindow(PageLayout layout, const Captions& captions, QWidget* parent = nullptr);

    void SetNotice(const QString& text, bool isGood = false) { notice_->SetNotice(text, isGood); }

    std::function<void()> onPrint{};
    std::function<void(const QString& path)> onSave{};

 private:
    class Pages;

    void AskForFile();

    NoticeBar* notice_ = nullptr;
};

}  // namespace nordkeep
