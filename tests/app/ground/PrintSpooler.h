#pragma once

#include "tests/app/ground/RunningCopy.h"

namespace nordkeep {

/// The system's real print spooler on a port of the loopback address, with a folder and a printer of its own.
/// What it has taken lies in its spool folder: the printer is stopped.
class PrintSpooler {
 public:
    PrintSpooler();
    ~PrintSpooler();
    PrintSpooler(const PrintSpooler&) = delete;
    PrintSpooler& operator=(const PrintSpooler&) = delete;

    /// As the variable CUPS_SERVER names it.
    std::string Address() const { return "127.0.0.1:" + std::to_string(port_); }
    /// Starts it with a printer of this name; false, and Output may tell why.
    bool Start(const std::string& printer);
    std::string Output() const;
    /// The texts of the documents that it has taken, as `pdftotext` reads them.
    std::vector<std::string> Documents() const;

 private:
    TempFolder data_{};
    int port_ = FreePort();
    int pid_ = 0;
};

}  // namespace nordkeep
