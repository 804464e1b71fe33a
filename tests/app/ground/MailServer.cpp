#include "tests/app/ground/MailServer.h"

#include "runtime/Fields.h"
#include "tests/app/ground/RunningCopy.h"

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>

namespace nordkeep {
namespace {

constexpr int kNobody = 65534;

constexpr const char* kSettings =
    "base_dir = @/run\n"
    "state_dir = @/state\n"
    "log_path = @/log\n"
    "protocols = pop3\n"
    "listen = 127.0.0.1\n"
    "ssl = yes\n"
    "ssl_cert = <@/cert.pem\n"
    "ssl_key = <@/key.pem\n"
    "disable_plaintext_auth = no\n"
    "mail_location = maildir:@/mail\n"
    "default_internal_user = root\n"
    "default_internal_group = root\n"
    "default_login_user = nobody\n"
    "passdb {\n driver = static\n args = password=secret\n}\n"
    "userdb {\n driver = static\n args = uid=65534 gid=65534 home=@/mail\n}\n"
    "service anvil {\n chroot =\n}\n"
    "service pop3-login {\n chroot =\n"
    " inet_listener pop3 {\n  port = PLAIN\n }\n"
    " inet_listener pop3s {\n  port = TLS\n  ssl = yes\n }\n}\n";

}  // namespace

MailServer::MailServer() : plainPort_(FreePort()), tlsPort_(FreePort()) {
    // The server reads mailboxes under an account without rights.
    ::chmod(folder_.Path().c_str(), 0755);
    for (const char* name : {"mail", "mail\\new", "mail\\cur", "mail\\tmp"}) {
        folder_.MakeFolders(name);
        if (::chown(folder_.Resolve(name).c_str(), kNobody, kNobody) != 0) return;
    }
    const std::string make = "cd " + folder_.Path() +
                             " && openssl req -x509 -newkey rsa:2048 -nodes -days 2 -keyout key.pem -out "
                             "cert.pem -subj /CN=localhost -addext subjectAltName=DNS:localhost 2>openssl";
    if (std::system(make.c_str()) != 0) return;
    WriteSettings();
    pid_ = ::fork();
    if (pid_ == 0) {
        ::execl("/usr/sbin/dovecot", "dovecot", "-F", "-c", (folder_.Path() + "/dovecot.conf").c_str(),
                nullptr);
        ::_exit(127);
    }
    const Caller greeting(plainPort_);
    greeting.Receive(3);
}

MailServer::~MailServer() {
    if (pid_ <= 0) return;
    ::kill(pid_, SIGTERM);
    ::waitpid(pid_, nullptr, 0);
}

void MailServer::WriteSettings() const {
    Text settings = ReplaceAll(kSettings, "@", folder_.Path());
    settings = ReplaceAll(settings, "PLAIN", std::to_string(plainPort_));
    folder_.Write("dovecot.conf", ReplaceAll(settings, "TLS", std::to_string(tlsPort_)));
}

void MailServer::Deliver(const std::string& name, const std::string& mail) const {
    folder_.Write("mail\\tmp\\" + name, mail);
    const std::string tmp = folder_.Path() + "/mail/tmp/" + name;
    if (::chown(tmp.c_str(), kNobody, kNobody) == 0) RenameFile(tmp, folder_.Path() + "/mail/new/" + name);
}

std::size_t MailServer::WaitingMails() const {
    return ListFiles(folder_.Resolve("mail\\new")).size() + ListFiles(folder_.Resolve("mail\\cur")).size();
}

}  // namespace nordkeep
