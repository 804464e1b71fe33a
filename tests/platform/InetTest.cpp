#include "platform/qt/QtInet.h"
#include "tests/doubles/WebServer.h"
#include "tests/platform/LoopTest.h"

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
    QtInetFactory factory{};
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

TEST(Digest, IsTheKnownOne) {
    EXPECT_EQ(QtInetFactory().Md5("abc"), "900150983cd24fb0d6963f7d28e17f72");
}

}  // namespace
}  // namespace nordkeep
