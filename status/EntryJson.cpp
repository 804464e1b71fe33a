#include "status/EntryJson.h"

#include "runtime/Json.h"
#include "store/EventFolder.h"

namespace nordkeep {
namespace {

/// What both kinds of objects say, in this order.
struct Members {
    std::int64_t id = 0;
    Text time{};
    Text kind{};
    Text event{};
    std::optional<int> status{};
    Text priority{};
    Text object{};
    Text objectName{};
    Text type{};
    Text typeName{};
    Text port{};
    Text text{};
    Text customer{};
    Text user{};
    Text comment{};
};

std::string JsonOf(const Members& m) {
    JsonObject json;
    json.Add("id", m.id).Add("time", m.time).Add("kind", m.kind).Add("event", m.event);
    if (m.status) {
        json.Add("status", *m.status).Add("statusName", StatusName(*m.status));
    } else {
        json.AddNull("status").Add("statusName", "");
    }
    json.Add("priority", m.priority).Add("object", m.object).Add("objectName", m.objectName);
    json.Add("type", m.type).Add("typeName", m.typeName).Add("port", m.port).Add("text", m.text);
    json.Add("customer", m.customer).Add("user", m.user).Add("comment", m.comment);
    return json.Take();
}

Text WithoutBlanks(const Text& text) {
    return Text(TrimBlanks(text));
}

}  // namespace

const char* StatusName(int status) {
    switch (status) {
        case kStatusRemoved:
            return "removed";
        case kStatusNew:
            return "new";
        case kStatusCommented:
            return "commented";
        case kStatusNewWaiting:
            return "waiting";
        case kStatusCommentedWaiting:
            return "commented-waiting";
        case kStatusReset:
            return "reset";
        case kStatusAcknowledged:
            return "ended";
        default:
            return "unknown";
    }
}

std::string EntryJson(const JournalRow& row) {
    const JsonMembers data = ReadJsonObject(row.data).value_or(JsonMembers());
    const Text& initials = data.String("user");
    return JsonOf({.id = row.id,
                   .time = FromUtf8(row.time),
                   .kind = FromUtf8(row.kind),
                   .event = FromUtf8(row.event),
                   .status = row.status,
                   .priority = FromUtf8(row.priority),
                   .object = FromUtf8(row.object),
                   .objectName = data.String("objectName"),
                   .type = FromUtf8(row.type),
                   .typeName = data.String("typeName"),
                   .port = FromUtf8(row.port),
                   .text = FromUtf8(row.text),
                   .customer = data.String("customer"),
                   .user = row.user.empty() ? WithoutBlanks(initials) : FromUtf8(row.user),
                   .comment = data.String("comment")});
}

std::string RowJson(const JournalRow& row) {
    JsonObject json;
    json.Add("id", row.id).Add("time", FromUtf8(row.time)).Add("kind", FromUtf8(row.kind));
    json.Add("event", FromUtf8(row.event));
    row.status ? json.Add("status", *row.status) : json.AddNull("status");
    json.Add("priority", FromUtf8(row.priority)).Add("object", FromUtf8(row.object));
    json.Add("type", FromUtf8(row.type)).Add("port", FromUtf8(row.port)).Add("user", FromUtf8(row.user));
    json.Add("station", FromUtf8(row.station)).Add("text", FromUtf8(row.text));
    return json.Add("data", FromUtf8(row.data)).Take();
}

std::string AlarmJson(const cAlarm& alarm, std::int64_t id, const std::string& time) {
    return JsonOf({.id = id,
                   .time = time,
                   .kind = "alarm",
                   .event = EventPointerOf(alarm.m_FilePointer),
                   .status = alarm.m_Status,
                   .priority = alarm.m_TranslatedPrio,
                   .object = alarm.m_IdCode,
                   .objectName = alarm.m_TranslatedIDCode,
                   .type = alarm.m_TypeCode,
                   .typeName = alarm.m_TranslatedTypeCode,
                   .port = alarm.m_PortName,
                   .text = alarm.m_AlarmCodeToStore,
                   .customer = alarm.m_Customer,
                   .user = WithoutBlanks(alarm.m_User),
                   .comment = alarm.m_SmallComment});
}

}  // namespace nordkeep
