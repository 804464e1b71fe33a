#include "tests/app/ground/PrintSpooler.h"

#include "tests/app/ground/Shell.h"

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

namespace nordkeep {
namespace {

constexpr const char* kServer = "/usr/sbin/cupsd";

}  // namespace

PrintSpooler::PrintSpooler() {
    const std::string root = data_.Path();
    ::chmod(root.c_str(), 0755);
    for (const char* name : {"etc", "spool", "spool\\tmp", "cache", "state"}) data_.MakeFolders(name);
    data_.Write("etc\\cupsd.conf", "Listen " + Address() +
                                       "\nDefaultAuthType None\n"
                                       "<Location />\nOrder allow,deny\nAllow all\n</Location>\n"
                                       "<Location /admin>\nOrder allow,deny\nAllow all\n</Location>\n"
                                       "<Policy default>\n<Limit All>\nOrder allow,deny\nAllow all\n"
                                       "</Limit>\n</Policy>\n");
    data_.Write("etc\\cups-files.conf",
                "ServerRoot " + root + "/etc\nRequestRoot " + root + "/spool\nTempDir " + root +
                    "/spool/tmp\nCacheDir " + root + "/cache\nStateDir " + root + "/state\nErrorLog " + root +
                    "/errors\nAccessLog " + root + "/accesses\nPageLog " + root + "/pages\nFileDevice Yes\n");
}

PrintSpooler::~PrintSpooler() {
    if (pid_ <= 0) return;
    ::kill(pid_, SIGTERM);
    if (!WaitFor([&] { return ::waitpid(pid_, nullptr, WNOHANG) != 0; })) {
        ::kill(pid_, SIGKILL);
        ::waitpid(pid_, nullptr, 0);
    }
}

bool PrintSpooler::Start(const std::string& printer) {
    const std::string folder = data_.Path() + "/etc/";
    const std::string main = folder + "cupsd.conf";
    const std::string files = folder + "cups-files.conf";
    pid_ = ::fork();
    if (pid_ == 0) {
        ::execl(kServer, kServer, "-f", "-c", main.c_str(), "-s", files.c_str(), nullptr);
        ::_exit(127);
    }
    const std::string admin = "lpadmin -h " + Address() + " -p " + printer + " -v file:/dev/null -m raw; ";
    const std::string accept = "cupsaccept -h " + Address() + " " + printer;
    return WaitFor([&] { return Shell(admin + accept).status == 0; });
}

std::string PrintSpooler::Output() const {
    return data_.Read("errors");
}

std::vector<std::string> PrintSpooler::Documents() const {
    std::vector<std::string> texts;
    for (const Text& name : ListFiles(data_.Resolve("spool"))) {
        if (!name.starts_with("d")) continue;
        texts.push_back(Shell("pdftotext -layout " + data_.Resolve("spool\\" + name) + " -").output);
    }
    return texts;
}

}  // namespace nordkeep
