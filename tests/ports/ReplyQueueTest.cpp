#include "ports/ReplyQueue.h"

#include <gtest/gtest.h>

namespace nordkeep {
namespace {

TEST(ReplyQueue, SendsInTheOrderOfWhatIsAnswered) {
    Text sent;
    ReplyQueue queue([&](TextView bytes) { sent += bytes; });
    queue.SendInOrder("a");
    EXPECT_EQ(sent, "a") << "nothing waits in front of it";
    const auto first = queue.Hold("b");
    queue.SendInOrder("c");
    const auto second = queue.Hold("d");
    queue.SendInOrder("e");
    queue.Settle(second, true);
    EXPECT_EQ(sent, "a");
    queue.Settle(first, true);
    EXPECT_EQ(sent, "abcde");
}

TEST(ReplyQueue, DropsTheReplyToWhatCouldNotBeStored) {
    Text sent;
    ReplyQueue queue([&](TextView bytes) { sent += bytes; });
    const auto lost = queue.Hold("x");
    const auto stored = queue.Hold("y");
    queue.Settle(lost, false);
    queue.Settle(stored, true);
    EXPECT_EQ(sent, "y");
}

TEST(ReplyQueue, NeverAnswersANewCallerForTheOneBefore) {
    Text sent;
    ReplyQueue queue([&](TextView bytes) { sent += bytes; });
    const auto old = queue.Hold("old");
    queue.Clear();
    const auto fresh = queue.Hold("new");
    queue.Settle(old, true);
    EXPECT_EQ(sent, "");
    queue.Settle(fresh, true);
    EXPECT_EQ(sent, "new");
}

}  // namespace
}  // namespace nordkeep
