#include "support/defaultlogger.h"

#include "hook/logger.h"
#include "wrappers/qt/extensions/qtquickcommon/diagnostics/logging.h"

#include <gtest/gtest.h>

#include <iostream>

namespace VantleTest {

namespace {

class DefaultLogger : public Vantle::Logger
{
public:
    void info(const std::string &) override {}
    void warning(const std::string &message) override { std::cerr << message << '\n'; }
    void level3(const std::string &) override {}
    void level4(const std::string &) override {}
};

DefaultLogger defaultLogger;

class Listener : public testing::EmptyTestEventListener
{
    // Again for each test: those that have a logger of their own leave none behind.
    void OnTestStart(const testing::TestInfo &) override { Vantle::QtQuickCommon::setLogger(&defaultLogger); }
};

} // namespace

void installDefaultLogger()
{
    Vantle::QtQuickCommon::setLogger(&defaultLogger);
    testing::UnitTest::GetInstance()->listeners().Append(new Listener);
}

} // namespace VantleTest
