#include "app/RunningCheck.h"

#include <algorithm>
#include <array>

namespace nordkeep {
namespace {

constexpr int kTextMore = 3831;
constexpr std::size_t kMostLines = 50;

Text LineOf(const Finding& finding) {
    return finding.file + ":" + std::to_string(finding.line) + ": " + finding.sentence;
}

/// The last component, without its ending.
Text StemOf(TextView path) {
    const TextView name = path.substr(path.find_last_of('/') + 1);
    return Text(name.substr(0, name.find('.', 1)));
}

}  // namespace

void RunningCheck::Begin() {
    ++round_;
    check_ =
        std::make_unique<CentreCheck>(needs_.dataFolder, needs_.programFolder, needs_.language, needs_.role);
    PostSlice();
}

void RunningCheck::PostSlice() {
    needs_.loop.Post([this, round = round_] { RunSlice(round); });
}

void RunningCheck::RunSlice(int round) {
    if (!check_ || round != round_) return;
    const StallWatch::Mark mark(needs_.stalls, "check of the files");
    check_->Continue() ? PostSlice() : Finish();
}

void RunningCheck::Finish() {
    const std::unique_ptr<CentreCheck> done = std::move(check_);
    found_ = done->Result().All();
    count_ = done->Result().Count();
    areErrors_ = done->Result().Errors() > 0;
    WriteLines();
}

void RunningCheck::WriteLines() const {
    const std::size_t lines = std::min(found_.size(), kMostLines);
    for (std::size_t i = 0; i < lines; ++i) {
        const bool isError = found_[i].severity == Severity::Error;
        needs_.log.WriteSysLog(LineOf(found_[i]), isError ? LogKind::Failure : LogKind::Oddity);
    }
    if (count_ <= lines) return;
    const Text more = std::to_string(count_ - lines);
    const std::array<TextView, 1> parts = {more};
    needs_.log.WriteSysLog(FillPlaces(needs_.language.GetLanguageText(kTextMore), parts),
                           areErrors_ ? LogKind::Failure : LogKind::Oddity);
}

Text RunningCheck::Place() const {
    if (found_.empty()) return {};
    const auto isInFirst = [this](const Finding& finding) {
        return StemOf(finding.file) == StemOf(found_.front().file);
    };
    if (std::ranges::all_of(found_, isInFirst)) return StemOf(found_.front().file);
    return FromUtf8(needs_.dataFolder.Root().substr(needs_.dataFolder.Root().rfind('/') + 1));
}

}  // namespace nordkeep
