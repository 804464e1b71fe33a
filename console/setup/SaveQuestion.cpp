#include "console/setup/SaveQuestion.h"

#include "console/lists/SharedCaptions.h"

namespace nordkeep {
namespace {

constexpr int kCaptionAllTheSame = 5801;
constexpr int kCaptionCancel = 5644;

}  // namespace

bool AsksToSave(Dialogs& dialogs, const Captions& captions, const Text& what) {
    return dialogs.Ask({.text = what + "\r\n\r\n" + captions(kCaptionAllTheSame),
                        .byDefault = Answer::No,
                        .yes = captions(kCaptionSave),
                        .no = captions(kCaptionCancel)});
}

}  // namespace nordkeep
