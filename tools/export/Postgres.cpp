#include "tools/export/Entries.h"

#include <libpq-fe.h>

#include <array>

namespace nordkeep {
namespace {

constexpr const char* kTable =
    "CREATE TABLE IF NOT EXISTS entries("
    " id bigint PRIMARY KEY, time timestamptz NOT NULL, kind text NOT NULL, event text NOT NULL,"
    " status integer, priority text NOT NULL, object text NOT NULL, type text NOT NULL, port text NOT NULL,"
    " \"user\" text NOT NULL, station text NOT NULL, text text NOT NULL, data text NOT NULL);"
    "CREATE INDEX IF NOT EXISTS entries_by_time ON entries(time);"
    "CREATE INDEX IF NOT EXISTS entries_by_object ON entries(object) WHERE object <> ''";
constexpr const char* kInsert =
    "INSERT INTO entries VALUES($1,$2,$3,$4,$5,$6,$7,$8,$9,$10,$11,$12,$13) ON CONFLICT (id) DO NOTHING";
constexpr int kColumnCount = 13;

class PostgresTarget final : public EntryTarget {
 public:
    explicit PostgresTarget(const std::string& connection)
        : connection_(PQconnectdb(connection.c_str()), &PQfinish) {
        if (PQstatus(connection_.get()) != CONNECTION_OK) throw Error();
        PQsetNoticeProcessor(
            connection_.get(), [](void*, const char*) {}, nullptr);
        PQsetClientEncoding(connection_.get(), "UTF8");
    }

    std::int64_t LastId() override {
        Run(kTable);
        const Result last(PQexec(connection_.get(), "SELECT coalesce(max(id), 0) FROM entries"), &PQclear);
        if (PQresultStatus(last.get()) != PGRES_TUPLES_OK) throw Error();
        return std::stoll(PQgetvalue(last.get(), 0, 0));
    }

    void Write(const std::vector<JournalRow>& rows) override {
        Run("BEGIN");
        for (const JournalRow& row : rows) {
            try {
                Insert(row);
            } catch (const ExportError&) {
                PQclear(PQexec(connection_.get(), "ROLLBACK"));
                throw;
            }
        }
        Run("COMMIT");
    }

 private:
    using Result = std::unique_ptr<PGresult, decltype(&PQclear)>;

    void Insert(const JournalRow& row) {
        const std::string id = std::to_string(row.id);
        const std::string status = std::to_string(row.status.value_or(0));
        const std::array<const char*, kColumnCount> values = {id.c_str(),
                                                              row.time.c_str(),
                                                              row.kind.c_str(),
                                                              row.event.c_str(),
                                                              row.status ? status.c_str() : nullptr,
                                                              row.priority.c_str(),
                                                              row.object.c_str(),
                                                              row.type.c_str(),
                                                              row.port.c_str(),
                                                              row.user.c_str(),
                                                              row.station.c_str(),
                                                              row.text.c_str(),
                                                              row.data.c_str()};
        const Result done(PQexecParams(connection_.get(), kInsert, kColumnCount, nullptr, values.data(),
                                       nullptr, nullptr, 0),
                          &PQclear);
        if (PQresultStatus(done.get()) != PGRES_COMMAND_OK) throw Error();
    }

    void Run(const char* sql) {
        const Result done(PQexec(connection_.get(), sql), &PQclear);
        if (PQresultStatus(done.get()) != PGRES_COMMAND_OK) throw Error();
    }

    ExportError Error() const {
        std::string reason = PQerrorMessage(connection_.get());
        reason.erase(reason.find_last_not_of("\r\n") + 1);
        return ExportError("postgresql: " + reason);
    }

    std::unique_ptr<PGconn, decltype(&PQfinish)> connection_;
};

}  // namespace

std::unique_ptr<EntryTarget> OpenPostgres(const std::string& connection) {
    return std::make_unique<PostgresTarget>(connection);
}

}  // namespace nordkeep
