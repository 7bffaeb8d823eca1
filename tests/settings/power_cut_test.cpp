// A thousand power cuts: the writer is killed at a random moment, and the file must be completely old or new.
#include "settings/power_cut_content.h"
#include "support/home_folder.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <ctime>
#include <random>

namespace {

constexpr int kCuts = 1000;
constexpr int kLongestWaitMicroseconds = 5000;

// Returns the path of the writer, which is in the same folder as this program.
QByteArray WriterPath() {
    std::array<char, 4096> path{};
    const ssize_t length = ::readlink("/proc/self/exe", path.data(), path.size());
    const QByteArray self(path.data(), length);
    return self.left(self.lastIndexOf('/') + 1) + "power_cut_writer";
}

// Runs the writer and holds the ends of its standard input and output. It exits when its input is closed.
class Writer {
public:
    explicit Writer(QByteArray file) {
        std::array<int, 2> input{-1, -1};
        std::array<int, 2> output{-1, -1};
        EXPECT_EQ(::pipe2(input.data(), O_CLOEXEC) + ::pipe2(output.data(), O_CLOEXEC), 0);
        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_adddup2(&actions, input[0], STDIN_FILENO);
        posix_spawn_file_actions_adddup2(&actions, output[1], STDOUT_FILENO);
        QByteArray program = WriterPath();
        const std::array<char*, 3> arguments{program.data(), file.data(), nullptr};
        started_ =
            ::posix_spawn(&process_, program.constData(), &actions, nullptr, arguments.data(), environ) == 0;
        posix_spawn_file_actions_destroy(&actions);
        ::close(input[0]);
        ::close(output[1]);
        input_ = input[1];
        output_ = output[0];
    }
    ~Writer() {
        ::close(input_);
        ::close(output_);
        if (started_) {
            ::waitpid(process_, nullptr, 0);
        }
    }
    Writer(const Writer&) = delete;
    Writer& operator=(const Writer&) = delete;

    bool started() const { return started_; }
    bool Start(int number) const { return ::write(input_, &number, sizeof number) == sizeof number; }
    // Returns the next message; kEnded also when the writer itself has exited.
    PowerCutMessage Next() const {
        PowerCutMessage message;
        const bool whole = ::read(output_, &message, sizeof message) == sizeof message;
        return whole ? message : PowerCutMessage();
    }

private:
    pid_t process_ = -1;
    int input_ = -1;
    int output_ = -1;
    bool started_ = false;
};

void WaitMicroseconds(int microseconds) {
    const timespec time{0, microseconds * 1000L};
    ::nanosleep(&time, nullptr);
}

// Lets the writer write from `first` on, and kills it some time after its first write. Returns the last
// number that it reported, or -1 when not even the first write succeeded.
int LastBeforeCut(const Writer& writer, int first, int waitMicroseconds) {
    pid_t process = -1;
    int last = -1;
    writer.Start(first);
    while (process < 0 || last < 0) {
        const PowerCutMessage message = writer.Next();
        if (message.kind == PowerCutMessage::kEnded) {
            return -1;
        }
        (message.kind == PowerCutMessage::kProcess ? process : last) = message.value;
    }
    WaitMicroseconds(waitMicroseconds);
    ::kill(process, SIGKILL);
    PowerCutMessage message = writer.Next();
    for (; message.kind != PowerCutMessage::kEnded; message = writer.Next()) {
        last = message.value;
    }
    return last;
}

TEST(PowerCut, TheFileIsTheOldOrTheNewOneWhole) {
    HomeFolder home;
    const QString name = QStringLiteral("stats.ini");
    const Writer writer(home.Path(name).toUtf8());
    ASSERT_TRUE(writer.started()) << WriterPath().toStdString() << " does not exist";
    std::mt19937 random(7);
    int number = 0;
    int leftovers = 0;
    for (int cut = 0; cut < kCuts; ++cut) {
        const int wait = static_cast<int>(random() % kLongestWaitMicroseconds);
        // Leftovers of the last cut must not prevent the next write.
        const int told = LastBeforeCut(writer, number + 1, wait);
        ASSERT_GT(told, number) << "cut " << cut;
        const QByteArray bytes = home.Read(name);
        number = bytes.left(bytes.indexOf('\n')).toInt();
        ASSERT_TRUE(bytes == PowerCutContent(number)) << "cut " << cut << ": the content is incomplete";
        ASSERT_TRUE(number == told || number == told + 1)
            << "cut " << cut << ": " << number << " after " << told;
        leftovers += home.Count() > 1 ? 1 : 0;
    }
    EXPECT_GT(leftovers, 0) << "no cut hit a write";
    EXPECT_LE(home.Count(), 2U);
    RecordProperty("leftovers", leftovers);
}

} // namespace
