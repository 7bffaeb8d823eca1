// Preloaded into the jukebox. Prints the number of threads whenever the locale is set.
#include <clocale>
#include <cstdio>

#include <dirent.h>
#include <dlfcn.h>

namespace {

int ThreadCount() {
    int count = 0;
    DIR* tasks = opendir("/proc/self/task");
    while (const dirent* entry = readdir(tasks)) {
        count += entry->d_name[0] != '.' ? 1 : 0;
    }
    closedir(tasks);
    return count;
}

} // namespace

extern "C" char* setlocale(int category, const char* locale) noexcept {
    if (locale != nullptr) {
        std::fprintf(stderr, "locale set with %d threads\n", ThreadCount());
    }
    using SetLocale = char* (*)(int, const char*);
    static const auto next = reinterpret_cast<SetLocale>(dlsym(RTLD_NEXT, "setlocale"));
    return next(category, locale);
}
