#include "platform/sqlite/JournalRows.h"

#include <sqlite3.h>

#include <array>

namespace nordkeep {
namespace {

void BindText(sqlite3_stmt* statement, int place, const std::string& text) {
    sqlite3_bind_text(statement, place, text.data(), static_cast<int>(text.size()), SQLITE_STATIC);
}

std::string ColumnText(sqlite3_stmt* statement, int column) {
    const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement, column));
    return text ? std::string(text, static_cast<std::size_t>(sqlite3_column_bytes(statement, column)))
                : std::string();
}

}  // namespace

const char* const kEntriesTable =
    "CREATE TABLE IF NOT EXISTS entries("
    " id INTEGER PRIMARY KEY,"
    " time TEXT NOT NULL,"
    " kind TEXT NOT NULL,"
    " event TEXT NOT NULL DEFAULT '',"
    " status INTEGER,"
    " priority INTEGER NOT NULL DEFAULT '',"
    " object TEXT NOT NULL DEFAULT '',"
    " type TEXT NOT NULL DEFAULT '',"
    " port TEXT NOT NULL DEFAULT '',"
    " user TEXT NOT NULL DEFAULT '',"
    " station TEXT NOT NULL DEFAULT '',"
    " text TEXT NOT NULL DEFAULT '',"
    " data TEXT NOT NULL DEFAULT '');";

const char* const kEntriesColumns =
    "id, time, kind, event, status, priority, object, type, port, user, station, text, data";

void BindRow(sqlite3_stmt* in, const JournalRow& row) {
    sqlite3_bind_int64(in, 1, row.id);
    BindText(in, 2, row.time);
    BindText(in, 3, row.kind);
    BindText(in, 4, row.event);
    row.status ? sqlite3_bind_int(in, 5, *row.status) : sqlite3_bind_null(in, 5);
    const std::array texts = {&row.priority, &row.object,  &row.type, &row.port,
                              &row.user,     &row.station, &row.text, &row.data};
    int place = 6;
    for (const std::string* text : texts) BindText(in, place++, *text);
}

JournalRow RowOf(sqlite3_stmt* statement) {
    JournalRow row{.id = sqlite3_column_int64(statement, 0)};
    if (sqlite3_column_type(statement, 4) != SQLITE_NULL) row.status = sqlite3_column_int(statement, 4);
    std::string JournalRow::*const texts[] = {
        &JournalRow::time,     &JournalRow::kind,    &JournalRow::event, nullptr,
        &JournalRow::priority, &JournalRow::object,  &JournalRow::type,  &JournalRow::port,
        &JournalRow::user,     &JournalRow::station, &JournalRow::text,  &JournalRow::data};
    int column = 1;
    for (const auto text : texts) {
        if (text) row.*text = ColumnText(statement, column);
        ++column;
    }
    return row;
}

}  // namespace nordkeep
