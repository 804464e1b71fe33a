#include "tools/export/Entries.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string_view>
#include <thread>
#include <utility>
#include <vector>

namespace {

using namespace nordkeep;

constexpr std::size_t kTogether = 1000;
constexpr std::chrono::seconds kPause{1};
constexpr std::chrono::seconds kPauseBehindAFailure{5};
constexpr int kFailed = 1;
constexpr int kWrongUse = 2;

constexpr const char* kHelp =
    "Usage: nordkeep-export [--once] [--token TOKEN] SOURCE TARGET\n"
    "Copies the entries of a centre's journal into the table entries of a database, goes on where it\n"
    "stopped, and follows what comes.\n"
    "\n"
    "  SOURCE         http://HOST:PORT or https://HOST:PORT of a status service,\n"
    "                 or the path of a Journal.db\n"
    "  TARGET         sqlite:FILE or postgresql://USER@HOST/DATABASE\n"
    "  --once         end when it has caught up\n"
    "  --token TOKEN  for the status service; else the variable NORDKEEP_TOKEN\n"
    "  -h, --help     this text\n"
    "  -V, --version  the version\n"
    "\n"
    "Exit status: 0 caught up, 1 the source or target cannot be used, 2 wrong use.\n";

struct Wanted {
    std::string source{};
    std::string target{};
    std::string token{};
    bool isOnce = false;
};

/// None for words that make no sense, which have been named.
std::optional<Wanted> Parse(const std::vector<std::string>& words) {
    Wanted wanted;
    if (const char* const token = std::getenv("NORDKEEP_TOKEN")) wanted.token = token;
    for (std::size_t i = 0; i < words.size(); ++i) {
        const std::string& word = words[i];
        if (word == "--once") {
            wanted.isOnce = true;
        } else if (word == "--token" && i + 1 < words.size()) {
            wanted.token = words[++i];
        } else if (word.starts_with("-")) {
            std::fprintf(stderr, "nordkeep-export: unknown option %s, see --help\n", word.c_str());
            return std::nullopt;
        } else if (wanted.source.empty()) {
            wanted.source = word;
        } else if (wanted.target.empty()) {
            wanted.target = word;
        } else {
            std::fprintf(stderr, "nordkeep-export: one word too many: %s\n", word.c_str());
            return std::nullopt;
        }
    }
    const bool isTarget = wanted.target.starts_with("sqlite:") || wanted.target.starts_with("postgresql:") ||
                          wanted.target.starts_with("postgres:");
    if (!wanted.source.empty() && isTarget) return wanted;
    std::fputs(
        wanted.target.empty() ? kHelp : "nordkeep-export: the target is neither sqlite: nor postgresql:\n",
        stderr);
    return std::nullopt;
}

std::unique_ptr<EntrySource> OpenSource(const Wanted& wanted) {
    const bool isService = wanted.source.starts_with("http://") || wanted.source.starts_with("https://");
    return isService ? OpenStatusService(wanted.source, wanted.token) : OpenJournalFile(wanted.source);
}

std::unique_ptr<EntryTarget> OpenTarget(const Wanted& wanted) {
    constexpr std::string_view kSqlite = "sqlite:";
    const bool isFile = wanted.target.starts_with(kSqlite);
    return isFile ? OpenSqlite(wanted.target.substr(kSqlite.size())) : OpenPostgres(wanted.target);
}

/// Copies until something hinders it, or until it has caught up once.
void Export(const Wanted& wanted, bool& isFailing) {
    const auto target = OpenTarget(wanted);
    const auto source = OpenSource(wanted);
    std::int64_t last = target->LastId();
    for (;;) {
        const std::vector<JournalRow> rows = source->Read(last, kTogether);
        if (std::exchange(isFailing, false)) std::fputs("nordkeep-export: goes on\n", stderr);
        if (!rows.empty()) {
            target->Write(rows);
            last = rows.back().id;
            continue;
        }
        if (wanted.isOnce) return;
        std::this_thread::sleep_for(kPause);
    }
}

}  // namespace

int main(int argc, char** argv) {
    const std::vector<std::string> words(argv + 1, argv + argc);
    for (const std::string& word : words) {
        if (word == "-h" || word == "--help") return std::fputs(kHelp, stdout), 0;
        if (word == "-V" || word == "--version")
            return std::printf("nordkeep-export %s\n", NORDKEEP_VERSION), 0;
    }
    const std::optional<Wanted> wanted = Parse(words);
    if (!wanted) return kWrongUse;
    for (bool isFailing = false;;) {
        try {
            Export(*wanted, isFailing);
            return 0;
        } catch (const ExportError& error) {
            // Said once for each series.
            if (!std::exchange(isFailing, true)) std::fprintf(stderr, "nordkeep-export: %s\n", error.what());
            if (wanted->isOnce) return kFailed;
        }
        std::this_thread::sleep_for(kPauseBehindAFailure);
    }
}
