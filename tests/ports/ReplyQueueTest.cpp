#include "ports/ReplyQueue.h"

#include <gtest/gtest.h>

namespace nordkeep {
namespace {

struct Sent final : ReplySender {
    void SendReply(const SocketPeer&, TextView sent, Behind behind) override {
        bytes += sent;
        if (behind == Behind::HangUp) bytes += "|";
    }
    Text bytes{};  // with "|" for each hang-up
};

TEST(ReplyQueue, SendsInTheOrderOfWhatIsAnswered) {
    Sent line;
    ReplyQueue queue(line);
    queue.SendInOrder("a");
    EXPECT_EQ(line.bytes, "a") << "nothing waits in front of it";
    const auto first = queue.Hold("b");
    queue.SendInOrder("c");
    const auto second = queue.Hold("d");
    queue.SendInOrder("e");
    queue.Settle(second, true);
    EXPECT_EQ(line.bytes, "a");
    queue.Settle(first, true);
    EXPECT_EQ(line.bytes, "abcde");
}

TEST(ReplyQueue, DropsTheReplyToWhatCouldNotBeStored) {
    Sent line;
    ReplyQueue queue(line);
    const auto lost = queue.Hold("x");
    const auto stored = queue.Hold("y");
    queue.Settle(lost, false);
    queue.Settle(stored, true);
    EXPECT_EQ(line.bytes, "y");
}

TEST(ReplyQueue, NeverAnswersANewCallerForTheOneBefore) {
    Sent line;
    ReplyQueue queue(line);
    const auto old = queue.Hold("old");
    queue.Clear();
    const auto fresh = queue.Hold("new");
    queue.Settle(old, true);
    EXPECT_EQ(line.bytes, "");
    queue.Settle(fresh, true);
    EXPECT_EQ(line.bytes, "new");
}

TEST(ReplyQueue, HangsUpBehindItsReplyAndAlsoWithoutOne) {
    Sent line;
    ReplyQueue queue(line);
    const auto first = queue.Hold("a");
    queue.SendInOrder("b", Behind::HangUp);
    queue.SendInOrder("c");
    queue.Settle(first, true);
    EXPECT_EQ(line.bytes, "ab|") << "nobody is there any more to answer";
    const auto lost = queue.Hold("d", Behind::HangUp);
    queue.Settle(lost, false);
    EXPECT_EQ(line.bytes, "ab||");
}

}  // namespace
}  // namespace nordkeep
