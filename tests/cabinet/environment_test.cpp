// Tests of the environment that the toolkit reads.
#include "app/cabinet/environment.h"

#include <QByteArray>
#include <QtGlobal>

#include <gtest/gtest.h>

namespace {

constexpr const char* kBus = "DBUS_SESSION_BUS_ADDRESS";

TEST(Environment, NoSessionBusIsLookedForWhereNoneIsNamed) {
    qunsetenv(kBus);
    PinEnvironment();
    EXPECT_EQ(qgetenv(kBus), "disabled:");
}

TEST(Environment, ANamedSessionBusStays) {
    qputenv(kBus, "unix:path=/run/bus");
    PinEnvironment();
    EXPECT_EQ(qgetenv(kBus), "unix:path=/run/bus");
}

} // namespace
