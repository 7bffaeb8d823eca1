// The outermost border of the console: an exception that no room handles ends it like a run-time error.
#include "app/console/console.h"
#include "platform/clock.h"
#include "platform/simulated/simulated_platform.h"
#include "shell/hand_down.h"
#include "state/form_main.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>

#include <cerrno>
#include <functional>
#include <new>
#include <system_error>

namespace {

// A port that throws exceptions that no room handles.
struct ThrowingClock : Clock {
    explicit ThrowingClock(std::function<void()> routine) : fault(std::move(routine)) {}
    QDateTime LocalTime() override {
        fault();
        return {};
    }
    std::int64_t timeGetTime() override { return 0; }

    std::function<void()> fault;
};

struct Ending {
    int code;
    std::string output;
};

Ending EndBy(const std::function<void()>& fault) {
    const QTemporaryDir folder;
    SimulatedPlatform platform;
    ThrowingClock clock(fault);
    const Ports real = platform.ports();
    Form_Main form(Ports{.audio = real.audio,
                         .graphs = real.graphs,
                         .MSComm1 = real.MSComm1,
                         .display = real.display,
                         .windows = real.windows,
                         .fonts = real.fonts,
                         .clock = clock,
                         .pump = real.pump,
                         .dialogs = real.dialogs,
                         .messageBox = real.messageBox,
                         .files = real.files,
                         .zlib = real.zlib,
                         .pictures = real.pictures},
                   HandDown());
    form.shell.AppFolder = folder.path();
    CommandReader input(-1);
    Console console{platform, form, input, {}, 0, {}};
    testing::internal::CaptureStdout();
    const int code = RunConsole(console);
    return {code, testing::internal::GetCapturedStdout()};
}

TEST(ProgramBorder, ALackOfThreadsIsToldLikeAnError) {
    const Ending ending =
        EndBy([] { throw std::system_error(EAGAIN, std::generic_category(), "no thread"); });
    EXPECT_EQ(ending.code, 1);
    EXPECT_NE(ending.output.find("\"exit\":1"), std::string::npos) << ending.output;
    EXPECT_NE(ending.output.find("51"), std::string::npos) << ending.output;
    EXPECT_NE(ending.output.find("no thread"), std::string::npos) << ending.output;
}

TEST(ProgramBorder, ExhaustedMemoryIsError7) {
    const Ending ending = EndBy([] { throw std::bad_alloc(); });
    EXPECT_EQ(ending.code, 1);
    EXPECT_NE(ending.output.find("Out of memory"), std::string::npos) << ending.output;
}

} // namespace
