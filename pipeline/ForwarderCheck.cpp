#include "pipeline/ForwarderCheck.h"

#include "pipeline/outputs/QueueAddress.h"
#include "runtime/Fields.h"

#include <algorithm>

namespace nordkeep {
namespace {

/// What a key's value looks like.
struct Form {
    const char* section;
    const char* key;
    bool (*isGood)(TextView value);
    const char* example;
};

bool IsHostAndPort(TextView value) {
    const std::size_t colon = value.rfind(':');
    if (colon == TextView::npos || colon == 0) return false;
    const auto port = WholeNumber(value.substr(colon + 1));
    return port && *port >= 1 && *port <= 65535;
}

bool IsHost(TextView value) {
    return value.find_first_of(" :/\\") == TextView::npos;
}

bool IsQueue(TextView value) {
    return ParseQueueAddress(value).has_value();
}

/// "low-high", one number, or -1 for all.
bool IsRange(TextView value) {
    if (WholeNumber(value)) return true;
    const std::vector<Text> ends = Split(value, '-');
    return ends.size() == 2 &&
           std::ranges::all_of(ends, [](const Text& end) { return IsNumeric(TrimBlanks(end)); }) &&
           LeadingNumber(ends[0]) <= LeadingNumber(ends[1]);
}

bool AreNumbers(TextView value) {
    return std::ranges::all_of(Split(value, ','),
                               [](const Text& piece) { return WholeNumber(piece).has_value(); });
}

bool AreStatuses(TextView value) {
    return AreNumbers(value) && std::ranges::all_of(Split(value, ','), [](const Text& piece) {
               return *WholeNumber(piece) >= -1 && *WholeNumber(piece) <= 5;
           });
}

constexpr Form kForms[] = {
    {"ComCall", "Address", IsHostAndPort, "192.168.1.10:4001"},
    {"Torvex", "Address", IsHost, "192.168.1.10"},
    {"General", "MSMQFormatName", IsQueue, "amqp://192.168.1.10/alarms"},
    {"General", "SoundPrio", IsRange, "1-3"},
    {"General", "RelayPrio", IsRange, "1-3"},
    {"AlarmPagePrinter", "PrioToPrint", IsRange, "1-3"},
    {"Torvex", "StatusToBePassedToTorvex", AreStatuses, "0,1,2,3,4"},
    {"AlarmPagePrinter", "StatusToPrint", AreStatuses, "0,2"},
    {"General", "ServiceIntervals", AreNumbers, "30,60"},
};

}  // namespace

void CheckForwarders(const IniLines& main, FileFindings& findings) {
    for (const Form& form : kForms) {
        const IniLines::Entry* entry = main.Find(form.section, form.key);
        if (!entry || TrimBlanks(entry->value).empty() || form.isGood(TrimBlanks(entry->value))) continue;
        findings.Error(entry->line, kTextNotUnderstood, {form.key, entry->value, form.example});
    }
    const IniLines::Entry* address = main.Find("Torvex", "Address");
    const bool isWanted = address && !TrimBlanks(address->value).empty();
    if (isWanted && LeadingInt32(main.ValueOf("Torvex", "Port", "-1")) < 1)
        findings.Error(address->line, kTextNeeded, {"[Torvex] Port"});
    const IniLines::Entry* line = main.Find("ComCall", "Address");
    if (line && !TrimBlanks(line->value).empty() &&
        LeadingInt32(main.ValueOf("ComCall", "ReconnectInterval", "0")) < 1)
        findings.Error(line->line, kTextNeeded, {"[ComCall] ReconnectInterval"});
}

}  // namespace nordkeep
