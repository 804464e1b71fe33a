#pragma once

#include "platform/Clock.h"
#include "platform/KeptFiles.h"
#include "runtime/Role.h"

#include <functional>

namespace nordkeep {

/// The kind of a system log line: the number in the file and the icon on the console.
enum class LogKind : int { Failure = 1, Information = 2, Oddity = 3, Alarm = 5 };

/// One line of the system log as the console shows it.
struct LogRow {
    Text date{};  // YY-MM-DD
    Text time{};  // HH:NN:SS
    LogKind kind = LogKind::Information;
    Text text{};
};

/// The one place where the system reports what happens: a dated file and a row for the console.
/// Logging never fails towards its caller; a file that cannot be written loses the line there only.
class SysLog {
 public:
    using RowListener = std::function<void(const LogRow&)>;

    SysLog(const FileTree& dataFolder, const Clock& clock)
        : clock_(clock), file_(dataFolder), alarmFile_(dataFolder) {}

    /// Until a role is set, and on any copy but a client, the files are those of a server.
    void SetRole(Role role) { isClient_ = role == Role::Client; }
    /// Gets every row from now on, also those whose file could not be written. One listener; empty for none.
    void SetRowListener(RowListener listener) { listener_ = std::move(listener); }

    void WriteSysLog(TextView text, LogKind kind);

 private:
    const Clock& clock_;
    AppendingFile file_;
    AppendingFile alarmFile_;
    bool isClient_ = false;
    RowListener listener_{};
};

/// Folder of a kind's files below the data folder, such as "LogFiles\", and the ending of their names.
struct LogPlace {
    Text folder{};
    Text extension{};
};
LogPlace PlaceOfLog(LogKind kind, bool isClient);

}  // namespace nordkeep
