#include "console/print/SpooledOutput.h"
#include "tests/doubles/ManualTime.h"
#include "tests/doubles/TempFolder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <chrono>
#include <thread>

namespace nordkeep {
namespace {

/// A spooler is any program that takes a file: one that always does, one that never does, or none.
struct SpooledOutputTest : ::testing::Test {
    SpooledOutputTest() {
        language.LoadFrom("3713=Page %1 of %2\n5226=Kept: \n5227=Taken\n5228=Lost: \n");
        log.SetRowListener([this](const LogRow& row) { rows.push_back(row.text); });
    }
    std::unique_ptr<SpooledOutput> With(const std::string& spooler) {
        return std::make_unique<SpooledOutput>(
            SpooledOutput::Needs{
                .dataFolder = folder.Tree(), .clock = time, .log = log, .language = language},
            spooler);
    }
    std::vector<Text> Files() const { return ListFiles(folder.Resolve("Printed")); }
    /// Ticks until a condition holds; the spooler is a process, which takes its time.
    template <class Condition>
    bool TickUntil(SpooledOutput& output, Condition condition) {
        for (int i = 0; i < 6000 && !condition(); ++i) {
            output.Tick(0);
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
        }
        return condition();
    }

    TempFolder folder{};
    ManualTime time{};
    Language language{};
    SysLog log{folder.Tree(), time};
    std::vector<Text> rows{};
};

PrintDocument Page(const Text& title) {
    return {.title = title, .lines = {"one", "two"}, .isUnattended = true};
}

TEST_F(SpooledOutputTest, WhatTheSpoolerTakesLeavesNoFile) {
    const auto output = With("true");
    output->Print(Page("Bakery"));
    output->Tick(0);
    EXPECT_EQ(Files().size(), 1u) << "made before it is given away";
    EXPECT_TRUE(TickUntil(*output, [&] { return Files().empty(); }));
    EXPECT_TRUE(rows.empty());
}

TEST_F(SpooledOutputTest, WhatItRefusesStaysAndIsToldOnce) {
    for (const char* spooler : {"false", "no-such-program-anywhere"}) {
        const auto output = With(spooler);
        rows.clear();
        output->Print(Page("B\xE5t/club"));
        output->Print(Page("B\xE5t/club"));
        ASSERT_TRUE(TickUntil(*output, [&] { return !rows.empty() && Files().size() >= 2; })) << spooler;
        TickUntil(*output, [&, left = 20]() mutable { return --left == 0; });
        EXPECT_EQ(rows, std::vector<Text>{"Kept: Printed\\2024-03-05 070809 B\xE5t_club.pdf"}) << spooler;
        EXPECT_EQ(Files().size(), 2u) << "two of one second and one title";
        for (const Text& name : Files()) {
            EXPECT_TRUE(folder.Read("Printed\\" + name).starts_with("%PDF-")) << name;
            RemoveFile(folder.Resolve("Printed\\" + name));
        }
    }
}

TEST_F(SpooledOutputTest, ASpoolerThatHangsIsGivenUp) {
    folder.Write("hang", "#!/bin/sh\nexec sleep 600\n");
    ASSERT_EQ(::chmod(folder.Resolve("hang").c_str(), 0755), 0);
    const auto output = With(folder.Resolve("hang"));
    output->Print(Page("a"));
    output->Tick(250);
    output->Tick(59'000);
    EXPECT_TRUE(rows.empty());
    output->Tick(2'000);
    EXPECT_EQ(rows.size(), 1u);
    EXPECT_EQ(Files().size(), 1u);
}

TEST_F(SpooledOutputTest, WhatWaitsAtTheEndIsMadeAndSaidToBeKept) {
    const auto output = With("true");
    for (int i = 0; i < 120; ++i) output->Print(Page("a"));
    EXPECT_EQ(output->WaitingCount(), 120u);
    output->Close();
    EXPECT_EQ(Files().size(), 120u);
    EXPECT_EQ(rows.size(), 1u);
    EXPECT_TRUE(output->HasFailed());
    EXPECT_EQ(With("true")->WaitingCount(), std::nullopt) << "a copy that prints nothing has no such output";
}

TEST_F(SpooledOutputTest, AFolderThatCannotBeWrittenIsToldOnce) {
    folder.Write("Printed", "a file where the folder should be");
    const auto output = With("true");
    output->Print(Page("a"));
    output->Print(Page("b"));
    output->Tick(0);
    EXPECT_EQ(rows.size(), 1u);
}

TEST(TextPages, TurnThePaperForLongLinesAndBreakTheLongest) {
    Language language;
    const Captions captions(language);
    const auto made = [&](std::size_t letters, std::size_t lines) {
        TextPages pages({.title = "t", .lines = std::vector<Text>(lines, Text(letters, 'x'))}, "now",
                        captions);
        return pages.Make(1'000);
    };
    const std::size_t upright = made(90, 200);
    EXPECT_GT(made(110, 200), upright) << "fewer lines fit on a page that lies";
    EXPECT_EQ(made(100'000, 1), made(110, 100'000 / 140 + 1)) << "140 letters beside each other";
    EXPECT_EQ(made(0, 0), 1u);
}

}  // namespace
}  // namespace nordkeep
