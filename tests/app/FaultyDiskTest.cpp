#include "store/EventFile.h"
#include "tests/app/ground/RunningCopy.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <ostream>
#include <thread>

namespace nordkeep {
namespace {

/// A class of system calls that fails, and how.
struct Fault {
    std::string calls;
    std::string error;
    bool isOutage = true;  // of the storage; else the line itself is what fails
};

/// For the names of the tests.
void PrintTo(const Fault& fault, std::ostream* out) {
    *out << fault.calls << " " << fault.error;
}

/// Has calls of a running program fail for as long as it lives.
class Injection {
 public:
    Injection(int pid, const Fault& fault) {
        const std::string inject = "inject=" + fault.calls + ":error=" + fault.error;
        const std::string trace = "trace=" + fault.calls;
        const std::string target = std::to_string(pid);
        pid_ = ::fork();
        if (pid_ == 0) {
            const int null = ::open("/dev/null", O_RDWR);
            ::dup2(null, STDOUT_FILENO);
            ::dup2(null, STDERR_FILENO);
            ::execlp("strace", "strace", "-f", "-qq", "-e", trace.c_str(), "-e", inject.c_str(), "-p",
                     target.c_str(), nullptr);
            ::_exit(127);
        }
    }
    ~Injection() {
        ::kill(pid_, SIGINT);
        ::waitpid(pid_, nullptr, 0);
    }
    Injection(const Injection&) = delete;
    Injection& operator=(const Injection&) = delete;

    /// Somebody traces the program; false where this machine does not allow that.
    static bool HasAttached(int pid) {
        return WaitFor([&] {
            const auto status = ReadFile("/proc/" + std::to_string(pid) + "/status");
            return status && status->find("TracerPid:\t0\n") == Text::npos;
        });
    }

 private:
    int pid_ = -1;
};

/// One copy with a port, an object with a history, and a sender that counts its acknowledgements.
class FaultyDiskTest : public ::testing::TestWithParam<Fault> {
 protected:
    FaultyDiskTest() {
        copy.WriteMainSettings("MaxAlarms=0\r\nWidthForNumber=5\r\nNextAlarmId=17\r\n");
        copy.Data().Write("Settings\\Town.IDCode", "FORMAT=1,6,0,0,7,2\r\n100001;Bakery;\r\n");
        copy.Data().Write("Comments\\Town\\100001.TXT", "history\r\n");
        copy.AddPort("Port1",
                     "PortType=TCPS\r\nBindSocketToAddress=127.0.0.1\r\nPortNumber=" + std::to_string(port),
                     "Robofon=Town");
    }

    /// Sends one telegram; whether its reply came within a second.
    bool IsAcknowledged() {
        if (!caller) caller = std::make_unique<Caller>(port);
        caller->Send(RobofonTelegram("10000101"));
        if (caller->ReceiveWithin(1, 1000) == "\x06") return ++acknowledged > 0;
        // A reply that is late must not count for the next one.
        acknowledged += caller->ReceiveWithin(1, 200).size();
        caller.reset();
        return false;
    }
    /// Operators have it in their list: as events of the system's own.
    bool IsTold() const {
        return WaitFor([&] {
            return std::ranges::any_of(copy.EventFiles(), [&](const Text& file) {
                const Text event = copy.Data().Read(file);
                return event.find("Could not store") != Text::npos ||
                       event.find("cannot be written") != Text::npos;
            });
        });
    }
    std::size_t ReadableEvents() const {
        std::size_t readable = 0;
        for (const Text& file : copy.EventFiles()) {
            cAlarm alarm;
            readable += ReadFromDisk(copy.Data().Read(file), 1, alarm).has_value();
        }
        return readable;
    }

    RunningCopy copy{};
    int port = FreePort();
    std::unique_ptr<Caller> caller{};
    std::size_t acknowledged = 0;
    int refused = 0;
};

/// The address sanitizer finds out by a write to a pipe of its own what memory there is, and ends a program
/// in which that fails in an unknown way.
bool CanFail(const Fault& fault) {
#ifdef __SANITIZE_ADDRESS__
    return fault.calls.find(",write") == std::string::npos;
#else
    return !fault.calls.empty();
#endif
}

TEST_P(FaultyDiskTest, LosesNothingDestroysNothingAndRecoversByItself) {
    if (!CanFail(GetParam())) GTEST_SKIP() << "the sanitizer needs this call for itself";
    copy.Start();
    ASSERT_TRUE(WaitFor([&] { return IsAcknowledged(); }));
    {
        const Injection injection(copy.Pid(), GetParam());
        if (!Injection::HasAttached(copy.Pid())) GTEST_SKIP() << "this machine lets nobody trace a program";
        for (int i = 0; i < 4; ++i) refused += !IsAcknowledged();
    }
    EXPECT_TRUE(WaitFor([&] { return IsAcknowledged(); })) << "good again without a restart";
    EXPECT_TRUE(IsAcknowledged());
    EXPECT_TRUE(refused == 0 || !GetParam().isOutage || IsTold()) << copy.Output();
    copy.Kill();
    acknowledged += caller->ReceiveWithin(100, 200).size();
    copy.Start();
    EXPECT_TRUE(WaitFor([&] { return Caller(port).IsConnected(); }));
    EXPECT_GE(ReadableEvents(), acknowledged);
    const Text settings = copy.Data().Read("Settings\\Nordkeep.INI");
    EXPECT_NE(settings.find("Language=044"), Text::npos);
    EXPECT_NE(settings.find("WidthForNumber=5"), Text::npos);
    EXPECT_EQ(copy.Data().Read("Comments\\Town\\100001.TXT"), "history\r\n");
    EXPECT_NE(copy.Data().Read("Settings\\Town.IDCode").find("Bakery"), Text::npos);
}

INSTANTIATE_TEST_SUITE_P(EachClassOfCalls, FaultyDiskTest,
                         ::testing::Values(Fault{"openat", "EMFILE"}, Fault{"openat", "EACCES"},
                                           Fault{"openat", "EIO"}, Fault{"pwrite64,write", "ENOSPC"},
                                           Fault{"pwrite64", "EIO"}, Fault{"fsync,fdatasync", "EIO"},
                                           Fault{"rename,unlink", "EACCES"},
                                           Fault{"read,pread64", "EIO", false}),
                         [](const auto& tested) {
                             std::string name = tested.param.calls + "_" + tested.param.error;
                             std::ranges::replace(name, ',', '_');
                             return name;
                         });

}  // namespace
}  // namespace nordkeep
