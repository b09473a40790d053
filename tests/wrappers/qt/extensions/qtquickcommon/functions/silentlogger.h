#pragma once

#include "hook/logger.h"
#include "wrappers/qt/extensions/qtquickcommon/diagnostics/logging.h"

namespace VantleTest {

/// Takes the library's messages, which go nowhere, while it lives. Windows
/// without QML give some, about extensions that can't be loaded.
class SilentLogger : public Vantle::Logger
{
public:
    SilentLogger() { Vantle::QtQuickCommon::setLogger(this); }
    ~SilentLogger() override { Vantle::QtQuickCommon::setLogger(nullptr); }

    void info(const std::string &) override {}
    void warning(const std::string &) override {}
    void level3(const std::string &) override {}
    void level4(const std::string &) override {}
};

} // namespace VantleTest
