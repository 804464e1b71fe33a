#pragma once

#include "tools/Sender.h"
#include "tools/cli/Terminal.h"

#include <string>
#include <vector>

namespace nordkeep::tools {

/// Plays the other end of a line that does not carry telegrams. The result is the program's exit status.
using Play = int (*)(const SendOptions& options);

/// Writes files for a collecting port, target file:PATH, and waits until they have been collected.
int DropFiles(const SendOptions& options);
/// Hands mails over, target smtp:HOST:PORT.
int SendMails(const SendOptions& options);
/// Answers a port that polls, target listen:PORT, until it has confirmed every event.
int AnswerPolls(const SendOptions& options);
/// Is the mail server of a port that fetches, target listen:PORT, until its mailbox is empty.
int ActAsMailbox(const SendOptions& options);
/// Feeds every port of the demonstration centre in `folder` with one alarm and prints how it went.
int FeedDemo(const std::string& folder);
/// Takes what a port exports, target listen:PORT, and acknowledges it.
int ReceiveExports(const SendOptions& options);
/// Is the modem of a port, target pty (or pty:PATH for a link to it), until every message has been deleted.
int ActAsModem(const SendOptions& options);

/// Plays what a port received, as a traffic file has it, to the target again, with the pauses of the file.
int Replay(const SendOptions& options);

/// The play of a format; none for one that is sent as telegrams.
Play FindPlay(const std::string& format);
std::vector<std::string> PlayNames();

/// What a target says behind "kind:"; false when it is none of that kind.
bool TakeTarget(const SendOptions& options, const std::string& kind, std::string& rest);
/// A listening socket of the loopback address; -1 when the port cannot be had.
int ListenOn(const std::string& port);
/// Tells what went wrong; the status.
int Complain(const std::string& what, int status = kFailed);

}  // namespace nordkeep::tools
