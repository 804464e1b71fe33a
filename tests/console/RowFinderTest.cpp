#include "console/lists/RowFinder.h"
#include "console/lists/TableRows.h"

#include <gtest/gtest.h>

namespace nordkeep {
namespace {

class Names final : public TableRows {
 public:
    explicit Names(std::vector<Text> names) {
        Renew([&] { names_ = std::move(names); });
    }
    int ColumnCount() const override { return 2; }
    Text Heading(int) const override { return {}; }

 protected:
    int SourceCount() const override { return static_cast<int>(names_.size()); }
    Text SourceCell(int source, int column) const override {
        return column == 0 ? names_[static_cast<std::size_t>(source)] : "row " + std::to_string(source);
    }
    Text SourceKey(int source) const override { return std::to_string(source); }

 private:
    std::vector<Text> names_{};
};

int Find(const Names& rows, TextView wanted, RowFinder::By by, int from) {
    RowFinder finder;
    finder.Begin(wanted, by, from);
    int row = -1;
    while (row < 0 && finder.IsBusy()) row = finder.Step(rows, 2);
    return row;
}

TEST(RowFinder, FindsTheNextRowAndGoesRoundOnce) {
    const Names rows({"17 Mill", "18 Old mill", "19 School", "1 Smithy"});
    using By = RowFinder::By;
    EXPECT_EQ(Find(rows, "mill", By::Words, 0), 0);
    EXPECT_EQ(Find(rows, "mill", By::Words, 1), 1);
    EXPECT_EQ(Find(rows, "MILL", By::Words, 2), 0) << "round the end";
    EXPECT_EQ(Find(rows, "row mill", By::Words, 1), 1) << "words of any cell";
    EXPECT_EQ(Find(rows, "nothing", By::Words, 2), -1);
    EXPECT_EQ(Find(rows, "  ", By::Words, 0), -1);
    EXPECT_EQ(Find(rows, "s", By::Begin, 0), 2);
    EXPECT_EQ(Find(rows, "ill", By::Begin, 0), -1) << "the begin of a word";
    EXPECT_EQ(Find(Names({}), "a", By::Words, 7), -1);
}

TEST(RowFinder, LooksAtNoMoreThanItMay) {
    const Names rows(std::vector<Text>(1000, "Flat"));
    RowFinder finder;
    finder.Begin("cellar", RowFinder::By::Words, 500);
    int steps = 0;
    for (; finder.IsBusy(); ++steps) EXPECT_EQ(finder.Step(rows, 10), -1);
    EXPECT_GE(steps, 100);
}

}  // namespace
}  // namespace nordkeep
