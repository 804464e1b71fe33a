#include "console/setup/FieldForm.h"

namespace nordkeep {
namespace {

constexpr int kCaptionNow = 3866;
constexpr int kCaptionRestart = 3867;
constexpr int kCaptionReopen = 3868;

}  // namespace

Text WordsOf(const Wording& wording, const Captions& captions, TextView otherwise) {
    if (!wording.own.empty()) return wording.own;
    return wording.number > 0 && captions.IsInFile(wording.number) ? captions.FromFile(wording.number)
                                                                   : Text(otherwise);
}

Text AppliesText(const SetupField& field, const Captions& captions) {
    switch (field.key.when) {
        case AppliesWhen::Now:
            return captions(kCaptionNow);
        case AppliesWhen::Reopen:
            return captions(kCaptionReopen);
        case AppliesWhen::Restart:
            break;
    }
    return captions(kCaptionRestart);
}

}  // namespace nordkeep
