#pragma once

#include "ports/lines/LineSettings.h"
#include "runtime/Language.h"
#include "runtime/Protocol.h"
#include "runtime/SysLog.h"

namespace nordkeep {

/// The last word of the log line about a line that has been closed.
inline constexpr int kTextHasBeenClosed = 1028;

/// The system log lines of one port. A series of failed attempts to open writes one line.
class PortLog {
 public:
    PortLog(const Language& language, SysLog& log, const Text& portName, const LineSettings& line,
            MessageFormat format)
        : language_(language), log_(log), portName_(portName), line_(line), format_(format) {}

    /// `address` is what stands behind "PortSettings = ", such as "COM1:9600,N,8,1", or behind another name.
    void Opened(const Text& address, TextView name = "PortSettings");
    void OpenFailed(const Text& address, const Text& error, TextView name = "PortSettings");
    /// Whether the port's number is one that can be listened on; if not, that is a failed attempt to open.
    bool HasListenNumber(const Text& address, TextView name = "PortSettings");
    /// A connection or socket to `peer` ends. `at` stands in front of the peer in the line of a shutdown,
    /// `subject` begins the line of any other end.
    struct EndTexts {
        int at;
        int subject;
    };
    void Closed(bool isShuttingDown, const Text& peer, EndTexts texts);
    /// The connection or socket has failed.
    void ConnectionFailed(const Text& peer, const Text& error);
    /// The next failure writes a line again.
    void EndFailures() { isFailureLogged_ = false; }

    /// A line of kind 2 or 1 with the language text of this number and what follows it.
    void Information(int text, const Text& tail) { Write(text, tail, LogKind::Information); }
    void Failure(int text, const Text& tail) { Write(text, tail, LogKind::Failure); }

    Text GetLanguageText(int number) const { return language_.GetLanguageText(number); }
    /// Name, blank, description.
    Text NameAndDescription() const { return portName_ + " " + line_.PortDescription; }
    const Text& Name() const { return portName_; }
    const LineSettings& Line() const { return line_; }
    Text FormatName() const { return Text(NameOf(format_)); }

 private:
    void Write(int text, const Text& tail, LogKind kind);
    Text OpeningTail(const Text& address, TextView name) const;

    const Language& language_;
    SysLog& log_;
    const Text& portName_;
    const LineSettings& line_;
    MessageFormat format_;
    bool isFailureLogged_ = false;
};

}  // namespace nordkeep
