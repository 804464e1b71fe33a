#include "tools/cli/Terminal.h"

#include <cstdio>

namespace nordkeep::tools {

void PrepareTool(CLI::App& app, const std::string& name) {
    app.name(name);
    app.set_version_flag("-V,--version", name + " " + NORDKEEP_VERSION, "print the version and end");
    app.set_help_flag("-h,--help", "print this and end");
    app.option_defaults()->always_capture_default();
    // A script may put an option behind its usual ones to change it.
    app.option_defaults()->multi_option_policy(CLI::MultiOptionPolicy::TakeLast);
    app.get_formatter()->column_width(36);
    app.footer(kStatusHelp);
}

std::optional<int> ReadWords(CLI::App& app, int argc, char** argv) {
    try {
        app.parse(argc, argv);
    } catch (const CLI::Success& asked) {
        return app.exit(asked);
    } catch (const CLI::ParseError& error) {
        std::fprintf(stderr, "%s: %s; see --help\n", app.get_name().c_str(), error.what());
        return kWrongUse;
    }
    return std::nullopt;
}

}  // namespace nordkeep::tools
