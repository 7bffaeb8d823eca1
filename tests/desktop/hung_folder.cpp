// Preloaded into the jukebox. Once the file HUNG_FOLDER_ON exists, listing the folder HUNG_FOLDER never
// returns, and no signal handler runs meanwhile, as on a mount whose server is gone. The call creates the
// file HUNG_FOLDER_MARK.
#include <csignal>
#include <cstdlib>
#include <cstring>

#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <unistd.h>

namespace {

void Hang() {
    sigset_t all;
    sigfillset(&all);
    pthread_sigmask(SIG_BLOCK, &all, nullptr);
    close(open(std::getenv("HUNG_FOLDER_MARK"), O_CREAT | O_WRONLY | O_CLOEXEC, 0600));
    for (;;) {
        pause();
    }
}

} // namespace

extern "C" DIR* opendir(const char* path) {
    const char* hung = std::getenv("HUNG_FOLDER");
    if (hung != nullptr && std::strncmp(path, hung, std::strlen(hung)) == 0 &&
        access(std::getenv("HUNG_FOLDER_ON"), F_OK) == 0) {
        Hang();
    }
    using OpenFolder = DIR* (*)(const char*);
    static const auto next = reinterpret_cast<OpenFolder>(dlsym(RTLD_NEXT, "opendir"));
    return next(path);
}
