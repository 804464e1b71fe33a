#pragma once

#include "app/Foundation.h"
#include "console/lists/TextCheck.h"
#include "ports/SetUses.h"

#include <functional>
#include <optional>

namespace nordkeep {

/// The checks of the kinds of files that people type, for the text editor: the same that the check of the
/// whole centre does.
class TextFindings final : public TextCheck {
 public:
    explicit TextFindings(Foundation& foundation)
        : foundation_(foundation),
          ground_(foundation.DataFolder(), foundation.Files()),
          findings_(foundation.Texts()) {}

    void Begin(const Text& path, const Text& content) override;
    bool Continue() override;
    std::vector<Finding> Take() override;

 private:
    void CheckAtOnce(FileFindings& findings);
    void CheckPort(const Text& name, FileFindings& findings);

    Foundation& foundation_;
    SetGround ground_;
    Findings findings_;
    Text path_{};
    Text content_{};
    std::optional<IdCodeCheck> objects_{};
    bool isDone_ = true;
};

}  // namespace nordkeep
