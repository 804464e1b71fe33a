#pragma once

#include "tests/app/ground/RunningCopy.h"
#include "tests/app/ground/Shell.h"

namespace nordkeep {

/// A real database server on a folder of its own; it refuses to be run by the superuser.
class Postgres {
 public:
    Postgres() {
        Shell("chmod 755 " + folder_.Path() + " && install -d -o postgres " + data_);
        const std::string port = std::to_string(port_);
        Run("initdb -A trust -U house -D " + data_);
        Run("pg_ctl -D " + data_ + " -w -l " + data_ + "/log -o '-h 127.0.0.1 -p " + port + " -k " + data_ +
            "' start");
    }
    ~Postgres() { Run("pg_ctl -D " + data_ + " -m immediate stop"); }
    Postgres(const Postgres&) = delete;
    Postgres& operator=(const Postgres&) = delete;

    std::string Url() const { return "postgresql://house@127.0.0.1:" + std::to_string(port_) + "/postgres"; }
    std::string Ask(const std::string& sql) const {
        return Shell("psql -qAt '" + Url() + "' -c \"" + sql + "\"").output;
    }

 private:
    void Run(const std::string& command) const {
        const Shell run(
            "cd / && PATH=$(ls -d /usr/lib/postgresql/*/bin | tail -1):$PATH:/usr/sbin runuser -u postgres "
            "-- " +
            command + " > " + folder_.Path() + "/said 2>&1");
        EXPECT_EQ(run.status, 0) << command << Shell("cat " + folder_.Path() + "/said").output;
    }

    TempFolder folder_{};
    std::string data_ = folder_.Path() + "/data";
    int port_ = FreePort();
};

}  // namespace nordkeep
