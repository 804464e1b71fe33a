#include "tools/export/ExportCommand.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace nordkeep {
namespace {

bool IsDatabase(const std::string& target) {
    constexpr std::array<std::string_view, 3> kKinds = {"sqlite:", "postgresql:", "postgres:"};
    return std::ranges::any_of(kKinds, [&](auto kind) { return target.starts_with(kind); });
}

}  // namespace

void DeclareExport(CLI::App& app, ExportCommand& command) {
    app.description(
        "Copies the entries of a centre's journal into the table entries of a database, goes on where it "
        "stopped, "
        "and follows what comes.");
    app.add_flag("--once", command.isOnce, "end when it has caught up");
    app.add_option("--token", command.token, "for the status service; else the variable NORDKEEP_TOKEN")
        ->envname("NORDKEEP_TOKEN")
        ->type_name("TOKEN");
    app.add_option("SOURCE", command.source,
                   "http://HOST:PORT or https://HOST:PORT of a status service, or the path of a Journal.db")
        ->type_name("");
    app.add_option("TARGET", command.target, "sqlite:FILE or postgresql://USER@HOST/DATABASE")->type_name("");
    // Behind all words, so that one that is unknown is told first.
    app.callback([&command] {
        if (command.target.empty()) throw CLI::RequiredError("SOURCE and TARGET");
        if (!IsDatabase(command.target))
            throw CLI::ValidationError("TARGET", "neither sqlite: nor postgresql:");
    });
}

}  // namespace nordkeep
