/// To be preloaded: a file system on which opening a rollout file takes half a minute. A folder
/// beside the file tells that somebody waits.

#include <cstdarg>
#include <dlfcn.h>
#include <fcntl.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

extern "C" int open(const char *path, int flags, ...) {
    constexpr unsigned halfAMinute = 30;
    va_list rest;
    va_start(rest, flags);
    const auto mode = va_arg(rest, mode_t);
    va_end(rest);
    if (const std::string name = path; name.ends_with(".jsonl")) {
        mkdir((name + ".awaited").c_str(), S_IRWXU);
        sleep(halfAMinute);
    }
    using Open = int (*)(const char *, int, mode_t);
    return reinterpret_cast<Open>(dlsym(RTLD_NEXT, "open"))(path, flags, mode);
}
