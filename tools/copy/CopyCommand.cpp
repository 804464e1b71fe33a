#include "tools/copy/CopyCommand.h"

namespace nordkeep {

void DeclareCopy(CLI::App& app, std::string& target) {
    app.description("Moves the lines of AlarmLogFile.spl in the present folder to the end of a file.");
    app.add_option("FILE", target, "the file; settings say when a new one begins")->required()->type_name("");
}

}  // namespace nordkeep
