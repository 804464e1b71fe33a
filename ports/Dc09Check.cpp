#include "ports/Dc09Check.h"

#include "ports/dc09/Dc09Accounts.h"
#include "ports/dc09/Dc09Frame.h"

namespace nordkeep {
namespace {

constexpr int kTextNoAccount = 5323;
constexpr int kTextNoKey = 5324;

}  // namespace

void CheckDc09Accounts(const IniLines& lines, FileFindings& findings) {
    for (const IniLines::Entry* entry : lines.EntriesOf(kDc09Accounts)) {
        if (entry->key != kOtherDc09Accounts && !IsDc09Account(entry->key)) {
            findings.Error(entry->line, kTextNoAccount, {entry->key});
        } else if (!ReadDc09Account(entry->value)) {
            findings.Error(entry->line, kTextNoKey, {entry->key});
        }
    }
}

}  // namespace nordkeep
