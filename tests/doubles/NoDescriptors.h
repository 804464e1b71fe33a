#pragma once

#include <sys/resource.h>

namespace nordkeep {

/// As long as it lives, this process can open nothing, as when all its descriptors are in use.
class NoDescriptors {
 public:
    NoDescriptors() {
        ::getrlimit(RLIMIT_NOFILE, &before_);
        const rlimit none{0, before_.rlim_max};
        ::setrlimit(RLIMIT_NOFILE, &none);
    }
    ~NoDescriptors() { ::setrlimit(RLIMIT_NOFILE, &before_); }
    NoDescriptors(const NoDescriptors&) = delete;
    NoDescriptors& operator=(const NoDescriptors&) = delete;

 private:
    rlimit before_{};
};

}  // namespace nordkeep
