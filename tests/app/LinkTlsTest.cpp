#include "tests/app/ground/NetworkCopies.h"
#include "tests/app/ground/Shell.h"

namespace nordkeep {
namespace {

/// A server and a client with certificates of one authority, as the script of the repository makes them.
class LinkTlsTest : public NetworkTest {
 protected:
    LinkTlsTest() { MakeCertificates("ours"); }
    std::string Folder(const std::string& name) const { return certificates.Path() + "/" + name; }
    void MakeCertificates(const std::string& name) const {
        const Shell made("sh " NORDKEEP_SOURCE_DIR "/tools/make-link-certificates '" + Folder(name) +
                         "' 127.0.0.1 desk");
        EXPECT_EQ(made.status, 0) << made.output;
    }
    /// The keys of section NetWork, which ends the settings of either copy.
    std::string Keys(const std::string& folder, const std::string& name) const {
        const std::string stem = Folder(folder) + "/";
        return "Tls=1\r\nTlsCAFile=" + stem + "authority.pem\r\nTlsCertificate=" + stem + name +
               ".pem\r\nTlsKey=" + stem + name + ".key\r\n";
    }
    static void Add(const RunningCopy& copy, const std::string& lines) {
        copy.Data().Write("Settings\\Nordkeep.INI", copy.Data().Read("Settings\\Nordkeep.INI") + lines);
    }
    /// What the server says to somebody else's program that calls with these words.
    Shell CallWith(const std::string& words) const {
        return Shell(
            "printf '\\027\\000\\000\\000\\000' | timeout 5 openssl s_client -quiet -connect 127.0.0.1:" +
            std::to_string(networkPort) + " " + words);
    }

    TempFolder certificates{};
};

TEST_F(LinkTlsTest, TakesOnlyWhoHasACertificateOfItsAuthority) {
    Add(server, Keys("ours", "127.0.0.1"));
    Add(client, Keys("ours", "desk"));
    server.Start();
    client.StartWithScreen();
    EXPECT_TRUE(client.WaitForOutput("is connected to server")) << client.Output() << server.Output();
    EXPECT_TRUE(server.WaitForOutput("Client connected: 127.0.0.1"));
    Alarm();
    EXPECT_EQ(client.Stop(), 0);

    const std::string ours = "-cert " + Folder("ours") + "/desk.pem -key " + Folder("ours") + "/desk.key";
    EXPECT_EQ(CallWith(ours + " 2>/dev/null").output.substr(0, 1), "\x17")
        << "a client's program is answered";
    MakeCertificates("theirs");
    const std::string theirs =
        "-cert " + Folder("theirs") + "/desk.pem -key " + Folder("theirs") + "/desk.key";
    for (const std::string& words : {std::string(), theirs, ours + " -tls1_2"})
        EXPECT_EQ(CallWith(words + " 2>/dev/null").output, "") << words;
    Caller plain(networkPort);
    plain.Send(Text("\x17\0\0\0\0", 5));
    EXPECT_TRUE(plain.IsClosedByPeer());
    EXPECT_TRUE(server.WaitForOutput("Connection error with client 127.0.0.1", 4)) << server.Output();
}

TEST_F(LinkTlsTest, AClientTalksToNoServerThatCannotProveItself) {
    Add(client, Keys("ours", "desk"));
    server.Start();
    client.StartWithScreen();
    EXPECT_TRUE(client.WaitForOutput("Could not connect to the server")) << "plain" << client.Output();
    client.Kill();
    server.Stop();

    MakeCertificates("theirs");
    Add(server, Keys("theirs", "127.0.0.1"));
    server.Start();
    client.StartWithScreen();
    EXPECT_TRUE(client.WaitForOutput("Could not connect to the server", 2)) << "another's" << client.Output();
    EXPECT_EQ(server.Output().find("Client connected"), std::string::npos);
}

TEST_F(LinkTlsTest, ACallerThatNeverProvesItselfHoldsNoSlot) {
    Add(server, Keys("ours", "127.0.0.1"));
    server.Start();
    std::vector<std::unique_ptr<Caller>> silent;
    for (int i = 0; i < 8; ++i) silent.push_back(std::make_unique<Caller>(networkPort));
    for (const auto& caller : silent) EXPECT_TRUE(caller->IsClosedByPeer());
    Add(client, Keys("ours", "desk"));
    client.StartWithScreen();
    EXPECT_TRUE(client.WaitForOutput("is connected to server")) << client.Output() << server.Output();
}

}  // namespace
}  // namespace nordkeep
