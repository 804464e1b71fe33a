#include "platform/curl/CurlInet.h"
#include "platform/qt/QtDescriptorWatch.h"
#include "tests/doubles/WebServer.h"
#include "tests/platform/LoopTest.h"

#include <cstdlib>

namespace nordkeep {
namespace {

class Web : public LoopTest {
 protected:
    InetState Get(const Text& url) {
        slot->Execute(url);
        EXPECT_EQ(slot->LastState(), InetState::None);
        EXPECT_TRUE(Until([&] { return !slot->StillExecuting(); }));
        return slot->LastState();
    }

    WebServer server{};
    QtDescriptorWatches watches{};
    CurlInetFactory factory{loop, watches};
    std::unique_ptr<Inet> slot = factory.NewInet();
};

TEST_F(Web, EveryStatusIsAnAnswerAndABrokenOneIsNone) {
    for (const char* path : {"/page", "/missing", "/fault"}) {
        EXPECT_EQ(Get(server.Url(path)), InetState::Complete) << path;
        EXPECT_EQ(slot->GetChunk(4096), "path " + Text(path));
    }
    EXPECT_EQ(Get(server.Url("/broken")), InetState::Error);
    EXPECT_EQ(Get("http://127.0.0.1:1/"), InetState::Error);
    EXPECT_EQ(Get("no://such scheme"), InetState::Error);
    EXPECT_EQ(Get(""), InetState::Error);
    EXPECT_EQ(Get(server.Url("/page").substr(7)), InetState::Complete) << "an address without a scheme";
}

TEST_F(Web, CutsALongAnswer) {
    EXPECT_EQ(Get(server.Url("/long")), InetState::Complete);
    EXPECT_EQ(slot->GetChunk(1000).size(), 1000u);
    EXPECT_EQ(slot->GetChunk(100'000).size(), 3096u);
}

TEST_F(Web, ACancelledRequestIsAnErrorAndTheNextOneServed) {
    slot->Execute(server.Url("/slow"));
    Settle();
    EXPECT_TRUE(slot->StillExecuting());
    slot->Cancel();
    EXPECT_FALSE(slot->StillExecuting());
    EXPECT_EQ(slot->LastState(), InetState::Error);
    EXPECT_EQ(Get(server.Url("/page")), InetState::Complete);
    slot->Execute(server.Url("/slow"));
}

// A server that never comes to the end of its headers is left, whatever it goes on sending.
TEST_F(Web, GivesUpOnEndlessHeaders) {
    EXPECT_EQ(Get(server.Url("/headers")), InetState::Error);
    EXPECT_EQ(slot->LastError(), "The headers of the answer are too long");
    EXPECT_EQ(Get(server.Url("/line")), InetState::Error) << "one header without an end";
    EXPECT_EQ(Get(server.Url("/page")), InetState::Complete);
}

TEST_F(Web, FollowsARedirectionButNotOutOfTheWeb) {
    EXPECT_EQ(Get(server.Url("/to?/page")), InetState::Complete);
    EXPECT_EQ(slot->GetChunk(4096), "path /page");
    EXPECT_EQ(Get(server.Url("/to?file:///etc/hostname")), InetState::Error);
}

TEST_F(Web, TakesASecureServerByItsCertificateAlone) {
    const TempFolder folder;
    const std::string files = "-keyout " + folder.Path() + "/key.pem -out " + folder.Path() + "/cert.pem";
    ASSERT_EQ(std::system(("openssl req -x509 -newkey ec -pkeyopt ec_paramgen_curve:P-256 -nodes -days 2 "
                           "-subj /CN=localhost -addext subjectAltName=DNS:localhost " +
                           files + " 2>/dev/null")
                              .c_str()),
              0);
    const WebServer secure(folder.Path() + "/cert.pem", folder.Path() + "/key.pem");
    const Text place = secure.Url("/page").substr(Text("http://127.0.0.1").size());
    const Text url = "https://localhost" + place;
    EXPECT_EQ(Get(url), InetState::Error);
    EXPECT_NE(slot->LastError().find("certificate"), Text::npos) << slot->LastError();
    slot->SetAuthorityFile(folder.Path() + "/cert.pem");
    EXPECT_EQ(Get(url), InetState::Complete) << slot->LastError();
    EXPECT_EQ(Get(server.Url("/to?") + url), InetState::Complete);
    EXPECT_EQ(Get("https://localhost" + secure.Url("/to?").substr(Text("http://127.0.0.1").size()) +
                  server.Url("/page")),
              InetState::Error)
        << "what is asked for safely is not taken from anywhere else";
    EXPECT_EQ(Get("https://127.0.0.1" + place), InetState::Error) << "good for another name";
    slot->SetAuthorityFile(folder.Path() + "/none.pem");
    EXPECT_EQ(Get(url), InetState::Error);
}

TEST_F(Web, KnowsTheDigest) {
    EXPECT_EQ(factory.Md5("abc"), "900150983cd24fb0d6963f7d28e17f72");
}

}  // namespace
}  // namespace nordkeep
