#include "tools/cli/Terminal.h"
#include "tools/export/Entries.h"
#include "tools/export/ExportCommand.h"

#include <chrono>
#include <cstdio>
#include <string_view>
#include <thread>
#include <utility>
#include <vector>

namespace {

using namespace nordkeep;

constexpr std::size_t kTogether = 1000;
constexpr std::chrono::seconds kPause{1};
constexpr std::chrono::seconds kPauseBehindAFailure{5};

std::unique_ptr<EntrySource> OpenSource(const ExportCommand& wanted) {
    const bool isService = wanted.source.starts_with("http://") || wanted.source.starts_with("https://");
    return isService ? OpenStatusService(wanted.source, wanted.token) : OpenJournalFile(wanted.source);
}

std::unique_ptr<EntryTarget> OpenTarget(const ExportCommand& wanted) {
    constexpr std::string_view kSqlite = "sqlite:";
    const bool isFile = wanted.target.starts_with(kSqlite);
    return isFile ? OpenSqlite(wanted.target.substr(kSqlite.size())) : OpenPostgres(wanted.target);
}

/// Copies until something hinders it, or until it has caught up once.
void Export(const ExportCommand& wanted, bool& isFailing) {
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
    ExportCommand wanted;
    CLI::App app;
    tools::PrepareTool(app, "nordkeep-export");
    DeclareExport(app, wanted);
    if (const auto status = tools::ReadWords(app, argc, argv)) return *status;
    for (bool isFailing = false;;) {
        try {
            Export(wanted, isFailing);
            return tools::kDone;
        } catch (const ExportError& error) {
            // Said once for each series.
            if (!std::exchange(isFailing, true)) std::fprintf(stderr, "nordkeep-export: %s\n", error.what());
            if (wanted.isOnce) return error.isUnreachable ? tools::kRefused : tools::kFailed;
        }
        std::this_thread::sleep_for(kPauseBehindAFailure);
    }
}
