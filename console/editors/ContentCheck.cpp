#include "console/editors/ContentCheck.h"

#include <utility>

namespace nordkeep {

ContentCheck::ContentCheck(const Language& language, TextView content, Check check)
    : language_(language), check_(std::move(check)), found_(Run(content)) {}

// An empty file is no fault of the rows that are still to come.
std::vector<Finding> ContentCheck::Run(TextView content) const {
    if (content.empty()) return {};
    Findings findings(language_);
    FileFindings into(findings, {});
    check_(content, into);
    return findings.Take();
}

std::vector<Finding> ContentCheck::OfRow(const FileItem&, int line, const std::function<Text()>& content) {
    std::vector<Finding> found = Run(content());
    std::erase_if(found, [line](const Finding& finding) { return finding.line != line; });
    return found;
}

}  // namespace nordkeep
