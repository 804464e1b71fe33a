#include "tools/Peers.h"

#include <poll.h>
#include <sys/stat.h>

#include <cstdio>
#include <ctime>
#include <fstream>

namespace nordkeep::tools {
namespace {

constexpr int kLookMs = 20;

bool Exists(const std::string& path) {
    struct stat found {};
    return ::stat(path.c_str(), &found) == 0;
}

std::string Moment() {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    char digits[32];
    return {digits, std::strftime(digits, sizeof digits, "%Y-%m-%d|%H:%M:%S", &local)};
}

std::string LineOf(const SendOptions& options, long number) {
    const std::string code = NumberedCode(options, number);
    if (options.telegram.format == "confirmation") {
        return "0|||" + code + "|" + options.telegram.text + "\r\n";
    }
    return "0|" + Moment() + "|" + code + "||||" + options.telegram.text + "|nordkeep-send\r\n";
}

/// All at once under its name, or line by line as a program does that keeps its file open.
bool Write(const std::string& path, const std::vector<std::string>& lines, int slowMs) {
    const std::string written = slowMs > 0 ? path : path + ".new";
    std::ofstream file(written, std::ios::binary);
    for (const std::string& line : lines) {
        file << line << std::flush;
        if (slowMs > 0) ::poll(nullptr, 0, slowMs);
    }
    file.close();
    return file.good() && (slowMs > 0 || std::rename(written.c_str(), path.c_str()) == 0);
}

bool IsCollected(const std::string& path, int timeoutMs) {
    for (int waited = 0; Exists(path); waited += kLookMs) {
        if (waited > timeoutMs) return false;
        ::poll(nullptr, 0, kLookMs);
    }
    return true;
}

}  // namespace

int DropFiles(const SendOptions& options) {
    std::string path;
    if (!TakeTarget(options, "file", path)) return Complain("the target is file:PATH", kWrongUse);
    for (long sent = 0; sent < options.count;) {
        if (!IsCollected(path, options.timeoutMs)) return Complain(path + " is not collected", kNoAnswer);
        std::vector<std::string> lines;
        for (int i = 0; i < options.glue && sent < options.count; ++i)
            lines.push_back(LineOf(options, sent++));
        if (options.isCut) lines.back().resize(lines.back().size() / 2);
        if (!Write(path, lines, options.slowMs)) return Complain(path + " cannot be written");
        for (const std::string& line : lines) {
            if (!options.isQuiet) std::printf("-> %s\n", Readable(line).c_str());
        }
    }
    if (!IsCollected(path, options.timeoutMs)) return Complain(path + " is not collected", kNoAnswer);
    std::printf("collected %ld\n", options.count);
    return 0;
}

}  // namespace nordkeep::tools
