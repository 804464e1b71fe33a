#include "runtime/Protocol.h"

#include <array>
#include <utility>

namespace nordkeep {
namespace {

constexpr std::array<TextView, 8> kPortTypes = {"RS232", "TCPC", "TCPS", "FILE",
                                                "UDP",   "HTTP", "POP3", "SMTP"};

struct FormatRow {
    TextView name;
    bool isTelegramFormat;
};

constexpr std::array<FormatRow, 14> kFormats = {{{"Robofon (RBM600)", true},
                                                 {"Googol (GoogolT1)", true},
                                                 {"Text", true},
                                                 {"GSM", false},
                                                 {"RSM-02", true},
                                                 {"Robofon (RBM600) Export", true},
                                                 {"SOS Access XML (Mini)", true},
                                                 {"Aptus XML (Mini)", true},
                                                 {"Torvex SMS Confirmation File", false},
                                                 {"SOS Access XML (V4)", true},
                                                 {"Virtual Receiver (ROC)", true},
                                                 {"Mail (POP3/SMTP)", false},
                                                 {"Nordkeep File", false},
                                                 {"Sur-Gard (MLR2-DG)", true}}};

const FormatRow& RowOf(MessageFormat format) {
    return kFormats[static_cast<std::size_t>(format)];
}

}  // namespace

std::optional<PortType> ParsePortType(TextView word) {
    const TextView trimmed = TrimBlanks(word);
    for (std::size_t i = 0; i < kPortTypes.size(); ++i) {
        if (EqualsNoCase(trimmed, kPortTypes[i])) return static_cast<PortType>(i);
    }
    return std::nullopt;
}

std::optional<MessageFormat> ParseMessageFormat(int number) {
    if (number < 0 || number >= static_cast<int>(kFormats.size())) return std::nullopt;
    return static_cast<MessageFormat>(number);
}

TextView NameOf(MessageFormat format) {
    return RowOf(format).name;
}

bool IsTelegramFormat(MessageFormat format) {
    return RowOf(format).isTelegramFormat;
}

int SlotLimit(PortType type) {
    return type == PortType::RS232 ? 16 : 8;
}

}  // namespace nordkeep
