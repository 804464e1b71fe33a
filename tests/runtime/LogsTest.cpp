#include "runtime/LogPurge.h"
#include "runtime/TrafficLog.h"
#include "tests/doubles/ManualTime.h"
#include "tests/doubles/TempFolder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace nordkeep {
namespace {

TEST(SysLog, WritesOneLineByKindAndTellsTheListenerInAnyCase) {
    const TempFolder folder;
    ManualTime time;
    SysLog log(folder.Tree(), time);
    std::vector<Text> rows;
    log.SetRowListener([&](const LogRow& row) { rows.push_back(row.text); });
    log.WriteSysLog("lost in the file", LogKind::Failure);
    folder.MakeFolders("LogFiles");
    folder.MakeFolders("AlarmFiles_Client");
    log.WriteSysLog(Text("with \0 and \xE5", 12), LogKind::Failure);
    EXPECT_EQ(folder.Read("LogFiles\\2024-03-05.LOG"), "1;24-03-05;07:08:09 ;with ? and \xE5\r\n");
    chmod(folder.Resolve("LogFiles\\2024-03-05.LOG").c_str(), 0444);
    log.WriteSysLog("read-only", LogKind::Information);
    EXPECT_NE(folder.Read("LogFiles\\2024-03-05.LOG").find("2;24-03-05;07:08:09 ;read-only\r\n"), Text::npos);
    log.SetRole(Role::Client);
    log.WriteSysLog("alarm", LogKind::Alarm);
    EXPECT_EQ(folder.Read("AlarmFiles_Client\\2024-03-05.ALM"), "5;24-03-05;07:08:09 ;alarm\r\n");
    EXPECT_EQ(rows.size(), 4u);
}

TEST(TrafficLog, TellsAListenerAlsoWhenTheFileIsOff) {
    const TempFolder folder;
    ManualTime time;
    TrafficLog log(folder.Tree(), time);
    Text heard;
    log.SetListener(
        [&](TextView bytes, TrafficDirection, TextView port) { heard += Text(port) + Text(bytes); });
    log.WriteTrafficLog("x", TrafficDirection::Sent, "Port");
    EXPECT_EQ(heard, "Portx");
    EXPECT_FALSE(log.IsOpen());
}

TEST(TrafficLog, ReadsBackWhatItShows) {
    Text all;
    for (int code = 0; code < 256; ++code) all += static_cast<char>(code);
    EXPECT_EQ(BytesOfReadable(ReadableBytes(all, false)), all);
    EXPECT_EQ(BytesOfReadable("<stx>a<b<3><256><"),
              "\x02"
              "a<b\x03<256><");
}

TEST(TrafficLog, ShowsBytesByNameOrInHexAndClosesWhenIdle) {
    const TempFolder folder;
    folder.MakeFolders("LogFiles");
    ManualTime time;
    TrafficLog log(folder.Tree(), time);
    log.WriteTrafficLog("x", TrafficDirection::Received, "off");
    EXPECT_FALSE(log.IsOpen());
    log.Configure({.isOn = true, .isHex = false}, Role::StandAlone);
    log.WriteTrafficLog(Text("\x02"
                             "A\x00\x14\x7F\xE5",
                             6),
                        TrafficDirection::Received, "Port");
    log.Configure({.isOn = true, .isHex = true}, Role::StandAlone);
    log.WriteTrafficLog("\x06\xE5", TrafficDirection::Sent, "Port");
    EXPECT_EQ(folder.Read("LogFiles\\2024-03-05.DBG"),
              "07:08:09 Port <- <STX>A<0><20>\x7F\xE5\r\n07:08:09 Port -> 06 E5 \r\n");
    log.AddIdleTime(10'000);
    EXPECT_TRUE(log.IsOpen());
    log.AddIdleTime(1);
    EXPECT_FALSE(log.IsOpen());
    time.Set(time.Now().PlusDays(1));
    log.WriteTrafficLog("\x07", TrafficDirection::Received, "Port");
    EXPECT_TRUE(folder.Exists("LogFiles\\2024-03-06.DBG"));
}

TEST(LogPurge, RemovesOnlyOldFilesOfItsKind) {
    const TempFolder folder;
    for (const char* file : {"LogFiles\\a.LOG", "LogFiles\\a.DBG", "LogFiles\\Objects\\a.LOG",
                             "AlarmFiles\\a.alm", "LogFiles_Client\\a.LOG"}) {
        folder.Write(file, "x");
    }
    const OleDate today = FileTime(folder.Resolve("LogFiles\\a.LOG"));
    PurgeOldLogs(folder.Tree(), Role::StandAlone, 0, today.PlusDays(1000));
    PurgeOldLogs(folder.Tree(), Role::StandAlone, 30, today.PlusDays(30));
    EXPECT_TRUE(folder.Exists("LogFiles\\a.LOG"));
    PurgeOldLogs(folder.Tree(), Role::StandAlone, 30, today.PlusDays(31));
    EXPECT_FALSE(folder.Exists("LogFiles\\a.LOG"));
    EXPECT_FALSE(folder.Exists("AlarmFiles\\a.alm"));
    for (const char* file : {"LogFiles\\a.DBG", "LogFiles\\Objects\\a.LOG", "LogFiles_Client\\a.LOG"}) {
        EXPECT_TRUE(folder.Exists(file)) << file;
    }
}

}  // namespace
}  // namespace nordkeep
