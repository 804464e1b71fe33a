#pragma once

#include "console/editors/RowFormat.h"

namespace nordkeep {

/// The check of a file that is small enough to be looked at as a whole with every character that is typed.
class ContentCheck final : public RowCheck {
 public:
    using Check = std::function<void(TextView content, FileFindings& findings)>;
    ContentCheck(const Language& language, TextView content, Check check);

    bool Continue() override { return false; }
    const std::vector<Finding>& Found() const override { return found_; }
    std::vector<Finding> OfRow(const FileItem& row, int line, const std::function<Text()>& content) override;

 private:
    std::vector<Finding> Run(TextView content) const;

    const Language& language_;
    Check check_;
    std::vector<Finding> found_{};
};

}  // namespace nordkeep
