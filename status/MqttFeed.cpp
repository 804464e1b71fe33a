#include "status/MqttFeed.h"

#include "status/EntryJson.h"
#include "store/EventFolder.h"

#include <algorithm>
#include <utility>

namespace nordkeep {
namespace {

constexpr int kTextLost = 3855;
constexpr int kTextBack = 3856;
constexpr int kTextNoAddress = 3857;

// One more than the last entry that the broker has; 0 where there never was a broker.
constexpr const char* kPlaceMark = "mqtt";
constexpr int kRetryMs = 5000;
constexpr int kKeepMs = 2000;
constexpr std::size_t kMostOnTheirWay = 200;
constexpr std::size_t kAlarmsAtOnce = 50;

bool IsOpenStatus(int status) {
    return status != kStatusAcknowledged && status != kStatusRemoved;
}

}  // namespace

std::string MqttFeed::Topic(const char* below) const {
    return ToUtf8(needs_.settings.Topic) + below;
}

void MqttFeed::Log(int text, const Text& behind, LogKind kind) {
    needs_.log.WriteSysLog(needs_.language.GetLanguageText(text) + behind, kind);
}

void MqttFeed::Open() {
    if (!IsConfigured()) return;
    // Who is told for the first time is told from now on, and not of the years before.
    const std::int64_t kept = needs_.journal.Mark(kPlaceMark);
    place_ = kept > 0 ? kept - 1 : needs_.journal.LastId();
    keptPlace_ = kept - 1;
    KeepPlace(kKeepMs);
    client_ = needs_.clients.NewClient(*this);
    Connect();
}

void MqttFeed::Connect() {
    sinceTryMs_ = 0;
    const std::optional<BrokerPlace> broker = PlaceOf(needs_.settings);
    if (!broker) {
        if (!std::exchange(hasFailed_, true)) Log(kTextNoAddress, needs_.settings.Address, LogKind::Failure);
        return;
    }
    const auto file = [&](const Text& name) {
        return name.empty() ? NativePath() : needs_.dataFolder.ResolveSetting(name);
    };
    stage_ = Stage::Connecting;
    client_->Connect({.host = ToUtf8(broker->host),
                      .port = broker->port,
                      .client = "nordkeep-" + Topic(""),
                      .user = ToUtf8(needs_.settings.User),
                      .password = ToUtf8(needs_.settings.Password),
                      .caFile = file(needs_.settings.CAFile),
                      .certificate = file(needs_.settings.ClientCertificate),
                      .key = file(needs_.settings.ClientKey),
                      .willTopic = Topic("/status"),
                      .will = "offline"});
}

void MqttFeed::OnConnected() {
    stage_ = Stage::Up;
    sent_.clear();
    sentUpTo_ = place_;
    alarmsUpTo_ = 0;  // another broker may stand there now
    if (std::exchange(hasFailed_, false)) Log(kTextBack, needs_.settings.Address, LogKind::Information);
    client_->Publish(Topic("/status"), "online", true);
}

void MqttFeed::OnLost(const std::string& reason) {
    stage_ = Stage::Away;
    sinceTryMs_ = 0;
    sent_.clear();
    if (std::exchange(hasFailed_, true)) return;
    Log(kTextLost, needs_.settings.Address + ": " + FromUtf8(reason), LogKind::Failure);
}

void MqttFeed::OnAcknowledged(int message) {
    const auto sent = std::ranges::find(sent_, message, &Sent::message);
    if (sent == sent_.end()) return;
    sent->isAcknowledged = true;
    while (!sent_.empty() && sent_.front().isAcknowledged) {
        place_ = std::max(place_, sent_.front().id);
        sent_.pop_front();
    }
}

void MqttFeed::Tick(int intervalMs) {
    if (!client_) return;
    if (stage_ == Stage::Away) {
        sinceTryMs_ += intervalMs;
        if (sinceTryMs_ >= kRetryMs) Connect();
    }
    if (stage_ == Stage::Up && alarmsUpTo_) PublishAlarms();
    if (stage_ == Stage::Up) PublishEntries();
    KeepPlace(intervalMs);
}

// Once for each connection: what stands there may be of long ago.
void MqttFeed::PublishAlarms() {
    const auto& open = needs_.events.Unacknowledged();
    auto next = open.upper_bound(*alarmsUpTo_);
    for (std::size_t i = 0; i < kAlarmsAtOnce && next != open.end(); ++i, ++next) {
        const cAlarm& alarm = *needs_.events.Find(*next);
        const Text event = EventPointerOf(alarm.m_FilePointer);
        const auto newest = needs_.journal.LastOf(event, std::nullopt);
        if (!PublishAlarm(event, &alarm, newest ? newest->id : 0, newest ? newest->time : "")) return;
        alarmsUpTo_ = *next;
    }
    if (next == open.end()) alarmsUpTo_.reset();
}

void MqttFeed::PublishEntries() {
    if (sent_.size() >= kMostOnTheirWay || sentUpTo_ >= needs_.journal.LastId()) return;
    std::vector<JournalRow> rows;
    needs_.journal.ReadSome(sentUpTo_, kMostOnTheirWay - sent_.size(),
                            [&](const JournalRow& row) { rows.push_back(row); });
    for (const JournalRow& row : rows) {
        if (!PublishEntry(row)) return;
        sentUpTo_ = row.id;
    }
}

bool MqttFeed::PublishEntry(const JournalRow& row) {
    if (row.kind == "event" || row.kind == "change" || row.kind == "removed") {
        // The present state, since an older one would bring back what has ended meanwhile.
        const Text event = FromUtf8(row.event);
        const auto number = EventNumberOf(event + ".eve");
        const cAlarm* alarm = number ? needs_.events.Find(needs_.events.FindFilePointer(*number)) : nullptr;
        if (!PublishAlarm(event, alarm, row.id, row.time)) return false;
    }
    const std::optional<int> message = client_->Publish(Topic("/events"), EntryJson(row), false);
    if (message) sent_.push_back({.message = *message, .id = row.id});
    return message.has_value();
}

bool MqttFeed::PublishAlarm(const Text& event, const cAlarm* alarm, std::int64_t id,
                            const std::string& time) {
    const bool isOpen = alarm && IsOpenStatus(alarm->m_Status);
    const std::string topic = Topic("/alarms/") + ToUtf8(event);
    return client_->Publish(topic, isOpen ? AlarmJson(*alarm, id, time) : "", true).has_value();
}

void MqttFeed::KeepPlace(int intervalMs) {
    sinceKeptMs_ += intervalMs;
    if (sinceKeptMs_ < kKeepMs || place_ == keptPlace_) return;
    sinceKeptMs_ = 0;
    if (needs_.journal.KeepMark({.name = kPlaceMark, .value = place_ + 1})) keptPlace_ = place_;
}

void MqttFeed::Close() {
    if (!client_) return;
    KeepPlace(kKeepMs);
    if (stage_ == Stage::Up) client_->Publish(Topic("/status"), "offline", true);
    client_->Close();
    client_.reset();
}

OutputState MqttFeed::State() const {
    const std::int64_t waiting = std::max<std::int64_t>(0, needs_.journal.LastId() - place_);
    return {.name = "mqtt", .isUp = IsUp(), .waiting = static_cast<std::size_t>(waiting)};
}

}  // namespace nordkeep
