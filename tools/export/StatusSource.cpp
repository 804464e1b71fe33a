#include "runtime/Json.h"
#include "tools/export/Entries.h"

#include <curl/curl.h>

namespace nordkeep {
namespace {

constexpr long kConnectSeconds = 10;
constexpr long kSilentSeconds = 60;
constexpr long kAnswered = 200;
constexpr std::size_t kMostBytes = 256 << 20;

std::size_t Append(char* bytes, std::size_t, std::size_t count, void* text) {
    auto& all = *static_cast<std::string*>(text);
    if (all.size() + count > kMostBytes) return 0;
    all.append(bytes, count);
    return count;
}

JournalRow RowOf(const JsonMembers& members) {
    const auto text = [&](const char* name) { return ToUtf8(members.String(name)); };
    JournalRow row{.id = members.Integer("id"), .time = text("time"), .kind = text("kind")};
    row.event = text("event");
    if (members.String("status") != "null") row.status = static_cast<int>(members.Integer("status"));
    row.priority = text("priority");
    row.object = text("object");
    row.type = text("type");
    row.port = text("port");
    row.user = text("user");
    row.station = text("station");
    row.text = text("text");
    row.data = text("data");
    return row;
}

class StatusSource final : public EntrySource {
 public:
    StatusSource(std::string url, const std::string& token)
        : url_(std::move(url)), handle_(curl_easy_init(), &curl_easy_cleanup) {
        while (url_.ends_with('/')) url_.pop_back();
        if (!token.empty())
            headers_.reset(curl_slist_append(nullptr, ("Authorization: Bearer " + token).c_str()));
    }

    std::vector<JournalRow> Read(std::int64_t after, std::size_t most) override {
        const std::string address =
            url_ + "/v1/entries?after=" + std::to_string(after) + "&limit=" + std::to_string(most);
        std::vector<JournalRow> rows;
        const std::string answer = Get(address);
        for (std::size_t at = 0; at < answer.size();) {
            const std::size_t end = answer.find('\n', at);
            const auto members = ReadJsonObject(std::string_view(answer).substr(at, end - at));
            if (end == std::string::npos || !members) throw ExportError(url_ + ": an answer that is none");
            rows.push_back(RowOf(*members));
            at = end + 1;
        }
        return rows;
    }

 private:
    std::string Get(const std::string& address) const {
        std::string answer;
        CURL* const handle = handle_.get();
        curl_easy_setopt(handle, CURLOPT_URL, address.c_str());
        curl_easy_setopt(handle, CURLOPT_PROTOCOLS_STR, "http,https");
        curl_easy_setopt(handle, CURLOPT_HTTPHEADER, headers_.get());
        curl_easy_setopt(handle, CURLOPT_CONNECTTIMEOUT, kConnectSeconds);
        curl_easy_setopt(handle, CURLOPT_LOW_SPEED_LIMIT, 1L);
        curl_easy_setopt(handle, CURLOPT_LOW_SPEED_TIME, kSilentSeconds);
        curl_easy_setopt(handle, CURLOPT_WRITEFUNCTION, &Append);
        curl_easy_setopt(handle, CURLOPT_WRITEDATA, &answer);
        const CURLcode result = curl_easy_perform(handle);
        const bool isUnreachable = result == CURLE_COULDNT_CONNECT || result == CURLE_COULDNT_RESOLVE_HOST;
        if (result != CURLE_OK) throw ExportError(url_ + ": " + curl_easy_strerror(result), isUnreachable);
        long status = 0;
        curl_easy_getinfo(handle, CURLINFO_RESPONSE_CODE, &status);
        if (status != kAnswered) throw ExportError(url_ + ": answer " + std::to_string(status));
        return answer;
    }

    std::string url_;
    std::unique_ptr<CURL, decltype(&curl_easy_cleanup)> handle_;
    std::unique_ptr<curl_slist, decltype(&curl_slist_free_all)> headers_{nullptr, &curl_slist_free_all};
};

}  // namespace

std::unique_ptr<EntrySource> OpenStatusService(const std::string& url, const std::string& token) {
    return std::make_unique<StatusSource>(url, token);
}

}  // namespace nordkeep
