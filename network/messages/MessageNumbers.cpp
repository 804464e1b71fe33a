#include "network/messages/MessageNumbers.h"

#include <array>
#include <utility>

namespace nordkeep {
namespace {

constexpr std::array<std::pair<Message, TextView>, 33> kNames = {{
    {Message::KeepAlive, "KEEPALIVE"},
    {Message::Translation, "TRANSLATION"},
    {Message::PortTree, "PORTTREE"},
    {Message::ClosePending, "CLOSEPENDING"},
    {Message::InitialData, "INITIALDATA"},
    {Message::InitialEvent, "INITIALEVENT"},
    {Message::OldEvent, "OLDEVENT"},
    {Message::NewEvent, "NEWEVENT"},
    {Message::AllEvents, "ALLEVENTS"},
    {Message::SendToTorvex, "SENDTOTORVEX"},
    {Message::RemovePortTree, "REMOVEPORTTREE"},
    {Message::RemoveTranslations, "REMOVETRANSLATIONS"},
    {Message::ResetAliveTestTimer, "RESETALIVETESTTIMER"},
    {Message::SetServiceMode, "SETSERVICEMODE"},
    {Message::UpdateIdCode, "UPDATEIDCODE"},
    {Message::Login, "LOGIN"},
    {Message::Logout, "LOGOUT"},
    {Message::ReadTextFile, "READTEXTFILE"},
    {Message::WriteTextFile, "WRITETEXTFILE"},
    {Message::FileDateTimeStamp, "FILEDATETIMESTAMP"},
    {Message::ScanForFiles, "SCANFORFILES"},
    {Message::ReadBinaryFile, "READBINARYFILE"},
    {Message::ProtocolVersion, "NETWORK_PROTOCOLVERSION"},
    {Message::MakeDir, "NETWORK_MAKEDIR"},
    {Message::Extensions, "EXTENSIONS"},
    {Message::Lines, "LINES"},
    {Message::Conditions, "CONDITIONS"},
    {Message::ServiceReason, "SERVICEREASON"},
    {Message::History, "HISTORY"},
    {Message::Report, "REPORT"},
    {Message::Handover, "HANDOVER"},
    {Message::Accounts, "ACCOUNTS"},
    {Message::ServerIsShuttingDown, "SERVERISSHUTTINGDOWN"},
}};

}  // namespace

Text MessageName(std::uint8_t number) {
    for (const auto& [message, name] : kNames) {
        if (static_cast<std::uint8_t>(message) == number) return Text(name);
    }
    return "Unknown (" + std::to_string(number) + ")";
}

}  // namespace nordkeep
