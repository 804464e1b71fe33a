// Put in front of the system's library: the wall clock is an hour late as soon as a file is there, as when
// somebody has set it. What measures how long something took goes on.

#include <dlfcn.h>
#include <time.h>
#include <unistd.h>

#include <cstdlib>

extern "C" int clock_gettime(clockid_t clock, timespec* time) {
    using Function = int (*)(clockid_t, timespec*);
    static const auto own = reinterpret_cast<Function>(::dlsym(RTLD_NEXT, "clock_gettime"));
    const int result = own(clock, time);
    const char* const file = std::getenv("CLOCK_SET_BY");
    if (clock == CLOCK_REALTIME && file && ::access(file, F_OK) == 0) time->tv_sec += 3600;
    return result;
}
