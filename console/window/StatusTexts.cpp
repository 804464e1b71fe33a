#include "console/window/StatusTexts.h"

#include "console/lists/RowModel.h"
#include "console/lists/SharedCaptions.h"
#include "runtime/Dates.h"

namespace nordkeep {
namespace {

constexpr int kTextServerTitle = 3550;
constexpr int kTextNotLoggedIn = 3551;
constexpr int kTextLoggedIn = 3552;
constexpr int kTextAcked = 3558;
constexpr int kTextOldest = 3559;
constexpr int kTextOtherPriorities = 5076;
constexpr int kTextInService = 5645;

constexpr std::int64_t kOverdueMs = 60000;

Text PriorityText(const Captions& captions, const std::array<int, 4>& counts) {
    Text text;
    for (std::size_t place = 0; place < 3; ++place) {
        if (place > 0) text += "   ";
        text += std::to_string(place + 1) + ": " + std::to_string(counts[place]);
    }
    if (counts[3] > 0) text += "   " + captions(kTextOtherPriorities, {std::to_string(counts[3])});
    return text;
}

}  // namespace

StatusTexts StatusTextsOf(const Captions& captions, const StatusFigures& figures) {
    StatusTexts texts;
    // Without contact nobody here knows; a 0 would say that all is well.
    const auto number = [&](std::size_t count) {
        return figures.rights.isConnectionLost ? Text("-") : std::to_string(count);
    };
    texts.unacked = captions(kCaptionUnacked, {number(figures.unacked)});
    if (!figures.rights.isConnectionLost) texts.byPriority = PriorityText(captions, figures.byPriority);
    texts.acked = captions(kTextAcked, {number(figures.acked)});
    if (figures.inService > 0) {
        texts.inService = captions(kTextInService, {std::to_string(figures.inService)});
    }
    if (!figures.oldestUnhandled.IsNever()) {
        texts.oldest = captions(kTextOldest, {AgeText(figures.oldestUnhandled, figures.now)});
        texts.isOverdue = figures.now.Milliseconds() - figures.oldestUnhandled.Milliseconds() > kOverdueMs;
    }
    if (figures.rights.IsClient()) {
        texts.user = figures.rights.level > 0 ? captions(kTextLoggedIn, {figures.fullName})
                                              : captions(kTextNotLoggedIn);
    }
    texts.clock = FormatDate(figures.now, "YYYY-MM-DD HH:NN:SS");
    return texts;
}

Text TitleOf(const Captions& captions, const TitleParts& parts) {
    Text title = "Nordkeep";
    if (parts.rights.role == Role::Server) {
        title += " - " + captions(kTextServerTitle, {std::to_string(parts.clients)});
    }
    if (parts.rights.IsClient()) {
        title += " - " + parts.server;
        if (!parts.fullName.empty()) title += " - " + parts.fullName;
        if (parts.rights.isConnectionLost) title += " - DISCONNECTED !";
    }
    return Printable(std::move(title));
}

}  // namespace nordkeep
