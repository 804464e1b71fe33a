#pragma once

#include "ports/formats/TelegramStep.h"
#include "runtime/SettingRow.h"

#include <optional>

namespace nordkeep {

/// How a port polls a web service for the events of its virtual receivers.
struct PollSettings {
    int HTTPGetInterval = 5;  // seconds between rounds
    int HTTPTimeout = 10;     // seconds
    int HTTPPolls = 5;        // in a row, of a receiver that has events
    Text HTTPCAFile{};        // certificates that are trusted besides the system's
};
std::span<const SettingRow<PollSettings>> PollSettingRows();

/// One receiver at the service, and how far its events have been taken in.
struct cVirtualReceiver {
    Text m_CSID{};
    Text m_Password{};
    Text m_Description{};
    int m_EventNumber = 0;  // of the service; asking with it tells the service what has arrived
    int m_FailureCount = 0;
    int m_PollCount = 0;
    bool m_GotData = false;
};

/// A receiver of a settings line "CSID=password,description".
cVirtualReceiver ReceiverOf(TextView line);
/// The CSID of such a line.
Text CsidOf(TextView line);

/// What proves the password in the next request.
Text PassInput(const cVirtualReceiver& receiver);
/// The address of the next request; bytes that cannot stand in one are encoded.
Text PollUrl(TextView service, const cVirtualReceiver& receiver, TextView pass);

/// What a reply makes of a receiver.
struct PollReply {
    TelegramStep step{};
    /// The service's number, to be kept once the events of the step are safe.
    std::optional<int> eventNumber{};
    Text error{};  // what the service complains of
    bool isCut = false;
};
/// True for what a service of this kind can say.
bool IsPollReply(TextView reply);
/// Reads the reply; counts failures and marks the receiver that had data.
PollReply ReadPollReply(TextView reply, cVirtualReceiver& receiver, OleDate now);

}  // namespace nordkeep
