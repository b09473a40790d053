#pragma once

#include "hook/logger.h"
#include "wrappers/qt/extensions/qtquickcommon/flickmonitor.h"

#include <QtQuick/private/qquickflickable_p.h>

#include <QtQuick/private/qquickflickable_p.h>

#include <functional>
#include <string>
#include <vector>

namespace VantleTest {

/// Keeps what the library logs while this lives.
class LibraryLog : public Vantle::Logger
{
public:
    LibraryLog();
    ~LibraryLog() override;

    void info(const std::string &message) override { infos.push_back(message); }
    void warning(const std::string &message) override { warnings.push_back(message); }
    void level3(const std::string &) override {}
    void level4(const std::string &) override {}

    std::vector<std::string> infos;
    std::vector<std::string> warnings;
};

/// Switches the library's traces on and keeps their texts while this lives.
class TraceLog
{
public:
    TraceLog();
    ~TraceLog();

    /// The texts since the last call.
    std::vector<std::string> takeTexts();

private:
    Q_DISABLE_COPY_MOVE(TraceLog)

    std::vector<std::string> m_texts;
};

/// How an address reads in a trace.
std::string addressText(const void *address);

/// One report of a flick monitor.
struct FlickReport
{
    enum Kind {
        Started,
        Ended
    };

    Kind kind;
    QQuickItem *flickable;
    QPointF position;
    QQuickItem *item;

    bool operator==(const FlickReport &) const = default;
};
void PrintTo(const FlickReport &report, std::ostream *stream);

/// Keeps the reports, and runs a test's own code at each.
class FlickReports : public Vantle::QtWrapper::FlickObserver
{
public:
    virtual ~FlickReports() = default;

    void flickStarted(QQuickItem *flickable, const QPointF &position, QQuickItem *item) override;
    void flickEnded(QQuickItem *flickable, const QPointF &position, QQuickItem *item) override;

    std::vector<FlickReport> take();

    std::function<void()> onStarted;
    std::function<void()> onEnded;

private:
    std::vector<FlickReport> m_reports;
};

} // namespace VantleTest
