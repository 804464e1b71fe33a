#pragma once

#include "platform/JournalFile.h"

struct sqlite3_stmt;

namespace nordkeep {

/// The table of entries, wherever it stands.
extern const char* const kEntriesTable;
/// Its columns, in the order of the two functions below.
extern const char* const kEntriesColumns;

/// Binds a row to the places ?1 to ?13 of a statement. The row stays as it is until the statement has run.
void BindRow(sqlite3_stmt* statement, const JournalRow& row);
/// The row of a statement that selects all columns.
JournalRow RowOf(sqlite3_stmt* statement);

}  // namespace nordkeep
