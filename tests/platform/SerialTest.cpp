#include "platform/qt/QtSerial.h"
#include "platform/qt/SerialSettings.h"
#include "tests/platform/LoopTest.h"

#include <fcntl.h>
#include <stdlib.h>
#include <sys/resource.h>
#include <unistd.h>

namespace nordkeep {
namespace {

/// The device at the far end of a line: the master of a pseudo terminal.
class Device {
 public:
    Device() : master_(::posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK)) {
        ::grantpt(master_);
        ::unlockpt(master_);
    }
    ~Device() { HangUp(); }
    Text Path() const { return ::ptsname(master_); }
    void Send(TextView bytes) {
        EXPECT_EQ(::write(master_, bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
    }
    const Text& Received() {
        char buffer[4096];
        ssize_t count = 0;
        while ((count = ::read(master_, buffer, sizeof buffer)) > 0)
            received_.append(buffer, static_cast<std::size_t>(count));
        return received_;
    }
    void HangUp() {
        if (master_ >= 0) ::close(master_);
        master_ = -1;
    }

 private:
    int master_;
    Text received_{};
};

double CpuSeconds() {
    rusage usage{};
    ::getrusage(RUSAGE_SELF, &usage);
    return static_cast<double>(usage.ru_utime.tv_sec + usage.ru_stime.tv_sec) +
           static_cast<double>(usage.ru_utime.tv_usec + usage.ru_stime.tv_usec) / 1e6;
}

class Serial : public LoopTest {
 protected:
    void SetUp() override {
        line->SetOnComm([this](CommEvent event) { onComm(event); });
        line->SetDevice(device->Path());
        line->SetSettings("9600,N,8,1");
    }

    std::unique_ptr<Device> device = std::make_unique<Device>();
    std::unique_ptr<MSComm> line = QtSerial().NewLine();
    Text received{};
    int errors = 0;
    std::function<void(CommEvent)> onComm = [this](CommEvent event) {
        if (event == CommEvent::Receive) received += line->Input();
        if (event == CommEvent::Error) ++errors;
    };
};

TEST_F(Serial, EveryByteGoesBothWays) {
    Text all;
    for (int c = 0; c < 256; ++c) all += static_cast<char>(c);
    for (const int handshaking : {0, 2}) {
        received.clear();
        line->SetHandshaking(handshaking);
        ASSERT_TRUE(line->SetPortOpen(true)) << line->LastError();
        EXPECT_TRUE(line->PortOpen());
        device->Send(all);
        EXPECT_TRUE(Until([&] { return received == all; }));
        const std::size_t before = device->Received().size();
        EXPECT_TRUE(line->Output(all));
        EXPECT_TRUE(Until([&] { return device->Received().substr(before) == all; }));
        EXPECT_TRUE(line->SetPortOpen(false));
    }
    EXPECT_EQ(errors, 0);
}

TEST_F(Serial, WhatIsSentBeforeTheCloseLeaves) {
    ASSERT_TRUE(line->SetPortOpen(true));
    EXPECT_TRUE(line->Output("ATH\r"));
    EXPECT_TRUE(line->SetPortOpen(false));
    EXPECT_FALSE(line->PortOpen());
    EXPECT_FALSE(line->Output("x"));
    EXPECT_EQ(device->Received(), "ATH\r");
}

TEST_F(Serial, ReceptionNestsWhileTheHandlerWaits) {
    bool isNested = false;
    onComm = [&](CommEvent) {
        received += line->Input();
        if (received != "RING") return;
        device->Send("OK");
        isNested = Until([&] { return received == "RINGOK"; });
    };
    ASSERT_TRUE(line->SetPortOpen(true));
    device->Send("RING");
    EXPECT_TRUE(Until([&] { return isNested; }));
}

TEST_F(Serial, AHungUpLineIsOneErrorAndCanBeOpenedAgain) {
    ASSERT_TRUE(line->SetPortOpen(true));
    device->Send("last words");
    EXPECT_TRUE(Until([&] { return received == "last words"; }));
    device->HangUp();
    EXPECT_TRUE(Until([&] { return errors == 1; }));
    EXPECT_FALSE(line->PortOpen());
    EXPECT_FALSE(line->LastError().empty());
    const double before = CpuSeconds();
    loop.SleepAndPump(200);
    EXPECT_LT(CpuSeconds() - before, 0.1);
    EXPECT_EQ(errors, 1);

    device = std::make_unique<Device>();
    line->SetDevice(device->Path());
    ASSERT_TRUE(line->SetPortOpen(true)) << line->LastError();
    device->Send("again");
    EXPECT_TRUE(Until([&] { return received == "last wordsagain"; }));
}

TEST_F(Serial, ADeviceThatCannotBeHadFailsWithAText) {
    for (const TextView path : {"/dev/no-such-line", "/dev/null", ""}) {
        line->SetDevice(Text(path));
        EXPECT_FALSE(line->SetPortOpen(true)) << path;
        EXPECT_FALSE(line->PortOpen());
        EXPECT_FALSE(line->LastError().empty());
    }
    Settle();
    EXPECT_EQ(errors, 0);
}

TEST_F(Serial, ALineBelongsToOneProgram) {
    ASSERT_TRUE(line->SetPortOpen(true));
    const auto second = QtSerial().NewLine();
    second->SetDevice(device->Path());
    EXPECT_FALSE(second->SetPortOpen(true));
    line->SetPortOpen(false);
    EXPECT_TRUE(second->SetPortOpen(true)) << second->LastError();
}

TEST_F(Serial, ControlLinesThatAreNotThereAreNoError) {
    EXPECT_FALSE(line->SetControlLines(true));
    ASSERT_TRUE(line->SetPortOpen(true));
    EXPECT_FALSE(line->SetControlLines(true));
    Settle();
    EXPECT_TRUE(line->PortOpen());
    EXPECT_EQ(errors, 0);
}

TEST(SerialSettings, WhatIsMissingOrUnknownStaysAtTheUsual) {
    struct Case {
        TextView text;
        int baud;
        QSerialPort::Parity parity;
        QSerialPort::DataBits dataBits;
        QSerialPort::StopBits stopBits;
    };
    const Case cases[] = {
        {"1200,E,7,2", 1200, QSerialPort::EvenParity, QSerialPort::Data7, QSerialPort::TwoStop},
        {" 115200 , o , 8 , 1.5 ", 115200, QSerialPort::OddParity, QSerialPort::Data8,
         QSerialPort::OneAndHalfStop},
        {"", 9600, QSerialPort::NoParity, QSerialPort::Data8, QSerialPort::OneStop},
        {"fast,X,9,3", 9600, QSerialPort::NoParity, QSerialPort::Data8, QSerialPort::OneStop},
        {"-1,,7", 9600, QSerialPort::NoParity, QSerialPort::Data7, QSerialPort::OneStop},
        {"99999999999999999999", 9600, QSerialPort::NoParity, QSerialPort::Data8, QSerialPort::OneStop},
    };
    for (const Case& c : cases) {
        const SerialSettings settings = ParseSerialSettings(c.text);
        EXPECT_EQ(settings.baud, c.baud) << c.text;
        EXPECT_EQ(settings.parity, c.parity) << c.text;
        EXPECT_EQ(settings.dataBits, c.dataBits) << c.text;
        EXPECT_EQ(settings.stopBits, c.stopBits) << c.text;
    }
}

}  // namespace
}  // namespace nordkeep
