#include "tests/app/ground/Needs.h"
#include "tests/app/ground/NetworkCopies.h"
#include "tests/app/ground/Postgres.h"

namespace nordkeep {
namespace {

class ExportTest : public NetworkTest {
 protected:
    ExportTest() {
        server.Data().Write(
            "Settings\\Nordkeep.INI",
            "[General]\r\nLanguage=044\r\n[Status]\r\nToken=t\r\nPort=" + std::to_string(statusPort) +
                "\r\n[NetWork]\r\nClientAddresses=127.0.0.1\r\n" + PortLine());
    }
    void Start() {
        server.Start();
        ASSERT_TRUE(server.WaitForOutput("Status service listens")) << server.Output();
    }
    std::string Service() const { return "http://127.0.0.1:" + std::to_string(statusPort); }
    std::string Journal() const { return server.Data().Path() + "/Data/Journal.db"; }
    std::string Table() const { return server.Data().Path() + "/table.db"; }
    static Shell Export(const std::string& words) {
        return Shell("timeout 60 " NORDKEEP_BIN_DIR "/nordkeep-export " + words);
    }
    static std::string Rows(const std::string& database) {
        return Shell("sqlite3 " + database + " 'SELECT * FROM entries ORDER BY id'").output;
    }

    int statusPort = FreePort();
};

TEST_F(ExportTest, MakesTheSameTableFromAFileAndAService) {
    Start();
    Alarms(30);
    EXPECT_EQ(Export("--once " + Journal() + " sqlite:" + Table()).output, "");
    EXPECT_EQ(Rows(Table()), Rows(Journal()));
    Alarms(3);
    EXPECT_EQ(Export("--once --token t " + Service() + " sqlite:" + Table()).output, "") << "goes on";
    EXPECT_EQ(Rows(Table()), Rows(Journal()));
    EXPECT_EQ(Export("--once --token t " + Service() + " sqlite:" + Table() + "2").output, "");
    EXPECT_EQ(Rows(Table() + "2"), Rows(Journal()));

    EXPECT_EQ(Export("--once " + Service() + " sqlite:" + Table()).output,
              "nordkeep-export: " + Service() + ": answer 401\n");
    EXPECT_EQ(Export("--once /nowhere/Journal.db sqlite:" + Table()).status, 1);
    EXPECT_EQ(Export("--once " + Journal() + " /no/kind/of/target").status, 2);
    EXPECT_EQ(Export("--onec a b").output,
              "nordkeep-export: The following argument was not expected: --onec; see --help\n");
}

TEST_F(ExportTest, LosesAndDoublesNothingOverKillsOfBothSides) {
    NORDKEEP_NEEDS("psql", "PostgreSQL");
    const Postgres database;
    Start();
    for (int round = 0; round < 3; ++round) {
        const std::string pid = Shell("NORDKEEP_TOKEN=t " NORDKEEP_BIN_DIR "/nordkeep-export " + Service() +
                                      " '" + database.Url() + "' > /dev/null 2>&1 & echo $!")
                                    .output;
        Alarms(100);
        EXPECT_TRUE(
            WaitFor([&] { return std::atoi(database.Ask("SELECT count(*) FROM entries").c_str()) >= 50; }));
        Shell("kill -9 " + pid);
        server.Kill();
        Start();
    }
    EXPECT_EQ(Export("--once --token t " + Service() + " '" + database.Url() + "'").output, "");
    const std::string columns = "id, kind, event, object, type, port, text, data";
    EXPECT_EQ(database.Ask("SELECT " + columns + " FROM entries ORDER BY id"),
              Shell("sqlite3 " + Journal() + " 'SELECT " + columns + " FROM entries ORDER BY id'").output);
    EXPECT_EQ(database.Ask(
                  "SELECT count(*) FROM entries WHERE kind = 'event' AND time > now() - interval '1 hour'"),
              "300\n");
}

}  // namespace
}  // namespace nordkeep
