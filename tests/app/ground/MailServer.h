#pragma once

#include "tests/doubles/TempFolder.h"

#include <string>

namespace nordkeep {

/// A real Dovecot on the loopback address with one mailbox, "u" with the password "secret", and a certificate
/// of its own making for "localhost".
class MailServer {
 public:
    MailServer();
    ~MailServer();
    MailServer(const MailServer&) = delete;
    MailServer& operator=(const MailServer&) = delete;

    /// Puts a mail into the mailbox.
    void Deliver(const std::string& name, const std::string& mail) const;
    std::size_t WaitingMails() const;

    int PlainPort() const { return plainPort_; }
    int TlsPort() const { return tlsPort_; }
    std::string CertificateFile() const { return folder_.Path() + "/cert.pem"; }
    std::string Log() const { return folder_.Read("log"); }

 private:
    void WriteSettings() const;

    TempFolder folder_{};
    int plainPort_;
    int tlsPort_;
    int pid_ = -1;
};

}  // namespace nordkeep
