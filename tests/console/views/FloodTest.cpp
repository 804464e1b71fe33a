#include "console/views/lists/ListPane.h"
#include "tests/console/views/WindowWorld.h"

#include <QtCore/QElapsedTimer>
#include <QtWidgets/QApplication>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QTableView>

#include <gtest/gtest.h>

namespace nordkeep {
namespace {

constexpr int kRowsBefore = 50000;
constexpr int kRounds = 60;
constexpr int kRowsInARound = 42;  // 10,000 alarms in a minute at four repaints a second
constexpr TextView kColumns =
    "[ListView_Unacked]\r\nColumns=DATE,TIME,TRPRIO,TRIDCODE,TRTYPECODE,CUSTOMER,ALARMCODETOSTORE\r\n";

/// The same rows in the toolkit's plainest model, to compare with.
class BareRows final : public QAbstractTableModel {
 public:
    void Add(int count) {
        beginInsertRows({}, rowCount(), rowCount() + count - 1);
        for (int i = 0; i < count; ++i) {
            rows_.push_back({QStringLiteral("2024-03-05"), QStringLiteral("07:08:09"), QStringLiteral("1"),
                             QStringLiteral("School"), QStringLiteral("Fire"), QStringLiteral("Town council"),
                             QStringLiteral("Fire")});
        }
        endInsertRows();
    }
    int rowCount(const QModelIndex& = {}) const override { return static_cast<int>(rows_.size()); }
    int columnCount(const QModelIndex& = {}) const override { return 7; }
    QVariant data(const QModelIndex& index, int role) const override {
        return role == Qt::DisplayRole ? rows_[static_cast<std::size_t>(index.row())][index.column()]
                                       : QVariant();
    }

 private:
    std::vector<QStringList> rows_{};
};

struct Times {
    double averageMs = 0;
    double longestMs = 0;
};

/// The time of a round of new rows with the painting of what can be seen.
Times Measure(QWidget& window, const std::function<void()>& round) {
    Times times;
    for (int i = 0; i < kRounds; ++i) {
        QElapsedTimer timer;
        timer.start();
        round();
        QApplication::processEvents();
        window.repaint();
        const double ms = static_cast<double>(timer.nsecsElapsed()) / 1e6;
        times.averageMs += ms / kRounds;
        times.longestMs = std::max(times.longestMs, ms);
    }
    return times;
}

// Prints its times for bench/run; what it holds is that nothing is disturbed.
TEST(Flood, LeavesSelectionAndRowsAlone) {
    BareRows rows;
    rows.Add(kRowsBefore);
    QTableView bare;
    bare.setModel(&rows);
    bare.verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    bare.resize(1000, 700);
    bare.show();
    const Times plain = Measure(bare, [&] {
        rows.Add(kRowsInARound);
        bare.scrollToBottom();
    });
    bare.hide();

    MainBoxWorld world;
    world.WriteGeneral("AlarmColorBehaviour=1\r\nColorState_0=8C1D00;FFFFFF\r\nMaxAlarms=1000000\r\n",
                       Text(kColumns));
    world.Start();
    const auto raise = [&](int count) {
        for (int i = 0; i < count; ++i) {
            auto alarm = std::make_unique<cAlarm>();
            alarm->m_FilePointer = static_cast<std::int32_t>(world.running->store.Events().Count()) + 1;
            alarm->m_TimeStamp = alarm->m_ArrivedTime = world.time.Now();
            alarm->m_TranslatedPrio = "1";
            alarm->m_TranslatedIDCode = "School";
            alarm->m_TranslatedTypeCode = alarm->m_AlarmCodeToStore = "Fire";
            alarm->m_Customer = "Town council";
            cAlarm& stored = world.running->store.Append(std::move(alarm));
            world.running->store.UpdateAlarmLists(stored);
        }
    };
    FakeUserStore store;
    MainWindow window(WindowOf(world, store));
    window.resize(1280, 800);
    window.show();
    raise(kRowsBefore);
    world.Tick();
    QApplication::processEvents();
    ListPane& list = *window.ListOf(Tab::Unacked);
    list.selectRow(kRowsBefore / 2);
    list.scrollToBottom();
    const Times inserted = Measure(list, [&] {
        raise(kRowsInARound);
        world.Tick();
        list.scrollToBottom();
    });
    EXPECT_EQ(list.model()->rowCount(), kRowsBefore + kRounds * kRowsInARound);
    EXPECT_EQ(list.SelectedKeys(), std::vector<Text>{std::to_string(kRowsBefore / 2 + 1) + "K"});
    list.Rows().ClickHeading(3);
    const Times sorted = Measure(list, [&] {
        raise(kRowsInARound);
        world.Tick();
    });
    QElapsedTimer timer;
    timer.start();
    list.Rows().ClickHeading(4);
    const auto sortMs = timer.restart();
    world.Box().Alarms().SetFilter(Tab::Unacked, "f");
    const auto firstMs = timer.restart();
    world.Box().Alarms().SetFilter(Tab::Unacked, "fix");
    std::printf("ms for all rows: sort %lld, first filter %lld, next %lld\n", sortMs, firstMs,
                timer.elapsed());
    std::printf("ms a round, average and longest: bare %.2f %.2f, list %.2f %.2f, sorted %.2f %.2f\n",
                plain.averageMs, plain.longestMs, inserted.averageMs, inserted.longestMs, sorted.averageMs,
                sorted.longestMs);
    std::printf("list / bare table: %.2f, sorted %.2f\n", inserted.averageMs / plain.averageMs,
                sorted.averageMs / plain.averageMs);
    EXPECT_EQ(list.model()->rowCount(), 0) << "no row has such a word";
}

}  // namespace
}  // namespace nordkeep
