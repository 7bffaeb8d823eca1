// Replaces a file again and again until it is killed, for the power-cut test.
#include "platform/posix/posix_files.h"
#include "settings/power_cut_content.h"
#include "settings/safe_write.h"

#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

namespace {

void Tell(int kind, int value) {
    const PowerCutMessage message{kind, value};
    if (::write(STDOUT_FILENO, &message, sizeof message) != sizeof message) {
        ::_exit(1);
    }
}

[[noreturn]] void WriteForEver(const QString& path, int number) {
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    PosixFiles files;
    for (;; ++number) {
        if (!WriteFileSafely(files, path, PowerCutContent(number))) {
            ::_exit(1);
        }
        Tell(PowerCutMessage::kWritten, number);
    }
}

} // namespace

// The argument is the file. For each number on standard input a child process writes that number's content,
// then that of the following numbers, until it is killed.
int main(int argc, char** argv) {
    if (argc != 2) {
        return 2;
    }
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    const QString path = QString::fromUtf8(argv[1]);
    int first = 0;
    while (::read(STDIN_FILENO, &first, sizeof first) == sizeof first) {
        const pid_t process = ::fork();
        if (process == 0) {
            WriteForEver(path, first);
        }
        Tell(PowerCutMessage::kProcess, process);
        ::waitpid(process, nullptr, 0);
        Tell(PowerCutMessage::kEnded, process);
    }
    return 0;
}
