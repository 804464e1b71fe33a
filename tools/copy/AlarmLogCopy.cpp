#include "tools/copy/AlarmLogCopy.h"

#include "platform/posix/DurableFiles.h"
#include "runtime/Json.h"

#include <cerrno>
#include <chrono>
#include <cstring>
#include <thread>

namespace nordkeep {
namespace {

constexpr TextView kSpool = "AlarmLogFile.spl";
constexpr TextView kTaken = "AlarmLogFile.taken";
constexpr TextView kPlan = "AlarmLogFile.plan";
/// The centre may be in the middle of a line when its spool is taken away.
constexpr std::chrono::milliseconds kLineInHand{200};

std::string DayOf(const NativePath& path) {
    const CivilTime day = FileTime(path).Civil();
    char text[16];
    std::snprintf(text, sizeof text, "%04d-%02d-%02d", day.year, day.month, day.day);
    return text;
}

}  // namespace

bool AlarmLogCopy::Fail(const char* what, const NativePath& path) {
    reason_ = std::string(what) + " " + path + (errno != 0 ? std::string(": ") + std::strerror(errno) : "");
    return false;
}

std::optional<std::string> AlarmLogCopy::Run(const std::string& today) {
    errno = 0;
    // Twice: first what an earlier start has left, then what has come since.
    for (int round = 0; round < 2; ++round) {
        if (!TakeSpool()) return reason_;
        if (!StampOf(PathOf(kTaken)).Exists()) continue;
        const bool isBegun = StampOf(PathOf(kPlan)).Exists();
        if (!isBegun && (!Rotate(today) || !Plan())) return reason_;
        if (!AppendRest() || !Finish()) return reason_;
    }
    return std::nullopt;
}

bool AlarmLogCopy::TakeSpool() {
    const NativePath spool = PathOf(kSpool);
    const NativePath taken = PathOf(kTaken);
    if (StampOf(taken).Exists() || StampOf(spool).size == 0) return true;
    // What was planned for the last one is over, since that one has gone.
    if (StampOf(PathOf(kPlan)).Exists() && !RemoveFile(PathOf(kPlan)))
        return Fail("cannot remove", PathOf(kPlan));
    if (!RenameFile(spool, taken)) return Fail("cannot take", spool);
    std::this_thread::sleep_for(kLineInHand);
    return true;
}

bool AlarmLogCopy::IsToRotate(const std::string& today) const {
    const FileStamp stamp = StampOf(target_);
    if (stamp.size == 0) return false;
    if (rotation_.isDaily && DayOf(target_) != today) return true;
    return rotation_.mostKilobytes > 0 && stamp.size >= std::int64_t{rotation_.mostKilobytes} * 1024;
}

bool AlarmLogCopy::Rotate(const std::string& today) {
    if (!IsToRotate(today)) return true;
    const NativePath name = target_ + "." + DayOf(target_);
    for (int number = 1; number < 10'000; ++number) {
        const NativePath kept = number == 1 ? name : name + "-" + std::to_string(number);
        if (StampOf(kept).Exists()) continue;
        return RenameFile(target_, kept) || Fail("cannot rename", target_);
    }
    return Fail("too many files beside", target_);
}

bool AlarmLogCopy::Plan() {
    const std::string plan = JsonObject().Add("size", StampOf(target_).size).Take();
    return ReplaceFile(PathOf(kPlan), plan) || Fail("cannot write", PathOf(kPlan));
}

// What stands behind the planned size is ours as far as it is the same; somebody else's lines stay where they
// are.
bool AlarmLogCopy::AppendRest() {
    const FileContent taken = LoadFile(PathOf(kTaken));
    const FileContent plan = LoadFile(PathOf(kPlan));
    const FileContent target = LoadFile(target_);
    if (taken.state != FileContent::State::Read) return Fail("cannot read", PathOf(kTaken));
    if (plan.state != FileContent::State::Read) return Fail("cannot read", PathOf(kPlan));
    if (target.state == FileContent::State::Unreadable) return Fail("cannot read", target_);
    const auto members = ReadJsonObject(plan.bytes);
    const auto planned = static_cast<std::size_t>(members ? members->Integer("size") : 0);
    TextView rest = taken.bytes;
    if (target.bytes.size() > planned) {
        const TextView behind = TextView(target.bytes).substr(planned);
        std::size_t same = std::min(behind.size(), rest.size());
        if (behind.substr(0, same) != rest.substr(0, same)) same = 0;
        rest.remove_prefix(same);
    }
    if (rest.empty()) return true;
    DurableFiles disk;
    if (!disk.Append(target_, rest)) return Fail("cannot write", target_);
    return disk.Synchronise(SIZE_MAX) || Fail("cannot write", target_);
}

bool AlarmLogCopy::Finish() {
    if (!RemoveFile(PathOf(kTaken))) return Fail("cannot remove", PathOf(kTaken));
    return RemoveFile(PathOf(kPlan)) || Fail("cannot remove", PathOf(kPlan));
}

}  // namespace nordkeep
