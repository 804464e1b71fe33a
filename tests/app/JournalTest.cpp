#include "tests/app/ground/NetworkCopies.h"
#include "tests/app/ground/ProtocolClient.h"
#include "tests/app/ground/Shell.h"

#include <algorithm>
#include <filesystem>
#include <fstream>

namespace nordkeep {
namespace {

/// What a person gets who asks the journal of a running program.
std::string Ask(const RunningCopy& copy, const std::string& question) {
    const std::string command =
        "cd " + copy.Data().Path() + " && sqlite3 -readonly Data/Journal.db \"" + question + "\"";
    const Shell asked(command);
    EXPECT_EQ(asked.status, 0) << command << "\n" << asked.output;
    return asked.output;
}

TEST_F(NetworkTest, TheJournalTellsWhoDidWhat) {
    server.Data().Write("Settings\\Users.INI", "[Users]\r\nanna=Anna Berg,AB,secret,2\r\n");
    server.Start();
    const ProtocolClient desk(networkPort);
    desk.Send(23);
    desk.Next();
    desk.Send(16, WireBytes().Short("anna").Short("wrong").Bytes());
    desk.Wait(17);
    desk.Send(16, WireBytes().Short("anna").Short("secret").Bytes());
    desk.Wait(16);
    Alarm();
    desk.Send(9);
    Text changed;
    for (const WireFrame& frame : desk.Until(4))
        if (frame.number == 6) changed = frame.payload;
    ASSERT_FALSE(changed.empty());
    for (const char status : {'\1', '\5'}) {
        changed[7] = status;
        desk.Send(7, changed);
    }
    desk.Send(19, WireBytes().Short("Comments\\Note.TXT").LongText("x").Bytes());
    desk.Send(17);
    desk.Wait(17);
    // What nothing was promised for is committed at the end of the turn that has answered it.
    EXPECT_TRUE(
        WaitFor([&] { return Ask(server, "SELECT count(*) FROM entries WHERE kind = 'logout'") == "1\n"; }));
    EXPECT_EQ(Ask(server, "SELECT kind, user, station FROM entries WHERE station <> '' ORDER BY id"),
              "refused|anna|127.0.0.1\nlogin|anna|127.0.0.1\ncomment|anna|127.0.0.1\nend|anna|127.0.0.1\n"
              "edit|anna|127.0.0.1\nlogout|anna|127.0.0.1\n");
    EXPECT_EQ(Ask(server, "SELECT json_extract(data, '$.status') FROM entries WHERE kind = 'end'"), "1\n");
    EXPECT_EQ(Ask(server, "SELECT count(*), object, port FROM entries WHERE kind = 'event'"),
              "1|100001|Port1\n");
}

TEST_F(NetworkTest, TheJournalAnswersWhatItsPaperAsks) {
    server.Start();
    Alarm();
    std::ifstream paper(NORDKEEP_SOURCE_DIR "/docs/journal.md");
    const std::string start = "    sqlite3 -readonly Data/Journal.db \"";
    int asked = 0;
    for (std::string line; std::getline(paper, line);) {
        if (!line.starts_with(start)) continue;
        Ask(server, line.substr(start.size(), line.rfind('"') - start.size()));
        ++asked;
    }
    EXPECT_GE(asked, 3);
}

TEST_F(NetworkTest, GoesOnWithoutTheJournalAndTakesItUpAgain) {
    server.Data().MakeFolders("Data\\Journal.db");
    server.Start();
    Alarms(3);
    EXPECT_EQ(server.EventFiles().size(), 4u) << "operators have an alarm of their own";
    EXPECT_TRUE(server.WaitForOutput("The journal cannot be written"));
    server.Kill();
    server.Start();
    Alarms(1);
    EXPECT_GE(server.EventFiles().size(), 5u) << "nothing was lost";
    std::filesystem::remove(server.Data().Resolve("Data\\Journal.db"));
    EXPECT_TRUE(WaitFor([&] {
        Alarms(1);
        return server.Output().find("The journal can be written again") != std::string::npos;
    }));
    EXPECT_NE(Ask(server, "SELECT count(*) FROM entries WHERE kind = 'event'"), "0\n");
}

}  // namespace
}  // namespace nordkeep
