// The toolkit's application object for tests that draw text.
#pragma once

#include "platform/simulated/surroundings.h"

#include <gtest/gtest.h>

#include <QCoreApplication>

#include <memory>

// Makes the object in the same way as the console, unless there is one already.
class GuiApplication : public testing::Environment {
public:
    void SetUp() override {
        if (QCoreApplication::instance() == nullptr) {
            surroundings_ = std::make_unique<Surroundings>();
        }
    }
    void TearDown() override { surroundings_.reset(); }

private:
    std::unique_ptr<Surroundings> surroundings_;
};

// One for each test program, however many sources include this.
inline const testing::Environment* const kGuiApplication =
    testing::AddGlobalTestEnvironment(new GuiApplication);
