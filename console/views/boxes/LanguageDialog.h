#pragma once

#include "console/views/lists/ViewParts.h"
#include "platform/Dialogs.h"

class QListWidget;

namespace nordkeep {

/// The choice of a language, in both languages at once, since none is loaded yet.
class LanguageDialog final : public QDialog {
 public:
    explicit LanguageDialog(const std::vector<LanguageChoice>& choices, QWidget* parent = nullptr);
    /// The number of the language; none when the window was closed without a choice.
    std::optional<int> Chosen() const;

 private:
    std::vector<LanguageChoice> choices_;
    QListWidget* list_ = nullptr;
};

}  // namespace nordkeep
