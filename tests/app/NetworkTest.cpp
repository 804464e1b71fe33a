#include "store/EventFile.h"
#include "tests/app/ground/NetworkCopies.h"
#include "tests/app/ground/ProtocolClient.h"

#include <gtest/gtest.h>

namespace nordkeep {
namespace {

TEST_F(NetworkTest, ClientFollowsItsServerThroughARestart) {
    server.Start();
    Alarm();
    client.StartWithScreen();
    EXPECT_TRUE(client.WaitForOutput("Nordkeep started"));
    EXPECT_TRUE(server.WaitForOutput("Client connected: 127.0.0.1"));
    server.Kill();
    EXPECT_TRUE(client.WaitForOutput("The connection to the server is lost"));
    server.Start();
    EXPECT_TRUE(client.WaitForOutput("is connected to server", 2)) << server.Output() << client.Output();
    Alarm();
    EXPECT_EQ(server.EventFiles().size(), 2u);
    EXPECT_FALSE(FolderExists(client.Data().Resolve("Data"))) << "a client stores nothing";
    EXPECT_EQ(server.Stop(), 0);
    EXPECT_TRUE(client.WaitForOutput("The connection to the server is lost", 2)) << "and it goes on trying";
    EXPECT_EQ(client.Stop(), 0) << client.Output();
}

TEST_F(NetworkTest, StrangersAreRefusedAndAMissingServerEndsTheClient) {
    client.StartWithScreen();
    EXPECT_TRUE(client.WaitForOutput("Could not connect to the server"));
    server.Data().Write("Settings\\Nordkeep.INI",
                        "[General]\r\nLanguage=044\r\n[NetWork]\r\nClientAddresses=10.0.0.1\r\n"
                        "NetworkPort=" +
                            std::to_string(networkPort) + "\r\n");
    server.Start();
    Caller stranger(networkPort);
    EXPECT_TRUE(stranger.IsClosedByPeer());
    EXPECT_TRUE(server.WaitForOutput("Connection refused, the address is not allowed: 127.0.0.1"));
}

/// The record of an event as the wire has it: the stored fields, and the status that it then had.
Text RecordBytes(const cAlarm& alarm, int isStored) {
    WireBytes wire;
    wire.Long(alarm.m_FilePointer).Integer(isStored).Integer(alarm.m_Status).Integer(alarm.m_Repeated);
    wire.Integer(alarm.m_SentToTorvex).Date(alarm.m_TimeStamp).Date(alarm.m_AckedTime);
    wire.Date(alarm.m_ArrivedTime);
    wire.Short(alarm.m_AlarmCodeToStore).Short("10000101").Short("").Short(alarm.m_ProtocolType);
    wire.Short(alarm.m_TranslatedPrio).Short(alarm.m_TranslatedTypeCode).Short("Bakery").Short("");
    wire.Short("Town").Short("03").Short(alarm.m_Prio).Short("01").Short("100001").Short("").Short("");
    wire.Short("").Short(alarm.m_SmallComment).Short("").Short(alarm.m_User).Short(alarm.m_PortDescription);
    wire.Short("").Short(alarm.m_LineCardNumber).Long(alarm.m_AlarmId).Short("").Short("");
    return wire.Short("10000101").Bytes();
}

TEST_F(NetworkTest, SpeaksEveryByteOfItsMessages) {
    server.Data().Write("Settings\\Town.TypeCode", "01;2;Fire;03\r\n");
    server.Start();
    const ProtocolClient first(networkPort);
    const ProtocolClient second(networkPort);
    first.Send(23);
    EXPECT_EQ(first.Next().payload, WireBytes().Long(2).Bytes());
    second.Send(23);
    second.Next();

    first.Send(5);
    const WireFrame tree = first.Next();
    EXPECT_EQ(tree.number, 3);
    EXPECT_EQ(tree.payload, WireBytes().Short("Port1").Short("\\Robofon").Short("\\\\Town").Bytes());
    const WireFrame set = first.Next();
    const OleDate never{};
    WireBytes town;
    town.Short("Town").Integer(1);
    town.Short("").Integer(0).Short("100001").Date(never).Date(never).Short("").Integer(0);
    town.Date(never).Date(never).Short("Bakery").Short("").Short("").Short("").Short("").Short("");
    town.Short("").Integer(0).Date(never);
    EXPECT_EQ(set.number, 2);
    town.Integer(1).Short("Fire").Integer(2).Short("03").Short("01");
    EXPECT_EQ(set.payload, town.Bytes());
    EXPECT_EQ(first.Next().number, 4);

    Alarm();
    const WireFrame object = first.Next();
    const WireFrame event = first.Next();
    ASSERT_TRUE(WaitFor([&] { return server.EventFiles().size() == 1; }));
    const Text file = server.EventFiles()[0];
    cAlarm alarm;
    ASSERT_TRUE(ReadFromDisk(server.Data().Read(file), 1, alarm).has_value());
    alarm.m_FilePointer = std::stoi(file.substr(file.size() - 11, 7));
    alarm.m_SmallComment = "";
    WireBytes bakery;
    bakery.Short("Town").Short("100001").Short("").Integer(0).Date(alarm.m_ArrivedTime).Date(never);
    bakery.Short("").Integer(0).Date(never).Date(never).Short("Bakery").Short("").Short("").Short("");
    bakery.Short("").Short("").Short("").Integer(0).Date(never);
    EXPECT_EQ(object.number, 15);
    EXPECT_EQ(object.payload, bakery.Bytes());
    EXPECT_EQ(event.number, 8);
    EXPECT_EQ(event.payload, RecordBytes(alarm, 0));

    first.Send(9);
    const WireFrame stored = first.Next();
    EXPECT_EQ(stored.number, 6);
    EXPECT_EQ(stored.payload, RecordBytes(alarm, -1));
    EXPECT_EQ(first.Next().number, 4);

    alarm.m_Status = kStatusAcknowledged;
    alarm.m_SmallComment = "false alarm";
    alarm.m_User = "ANN";
    const Text ended = RecordBytes(alarm, -1);
    first.Send(7, ended);
    first.Send(20, WireBytes().Short("Settings\\Town.IDCode").Bytes());
    const auto answers = first.Until(20);
    ASSERT_EQ(answers.size(), 2u) << "the sender hears of its change once";
    EXPECT_EQ(answers[0].number, 7);
    EXPECT_EQ(answers[0].payload, ended);
    second.Send(23);
    int echoes = 0;
    for (const WireFrame& frame : second.Until(23)) echoes += frame.number == 7 && frame.payload == ended;
    EXPECT_EQ(echoes, 2) << "every other client twice";
}

}  // namespace
}  // namespace nordkeep
