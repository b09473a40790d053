#include "support/compressionharness.h"

#include "hook/eventdata.h"
#include "wrappers/qt/extensions/qtquickcommon/compression/currenttime.h"
#include "wrappers/qt/extensions/qtquickcommon/diagnostics/logging.h"

#include <utility>

using namespace Vantle;
using namespace Vantle::QtWrapper;

namespace VantleTest {

namespace {

quint64 handTime = 0;

quint64 readHandTime()
{
    return handTime;
}

} // namespace

HandClock::HandClock(quint64 now)
{
    handTime = now;
    setTimeSource(readHandTime);
}

HandClock::~HandClock()
{
    setTimeSource(nullptr);
}

quint64 HandClock::now() const noexcept
{
    return handTime;
}

void HandClock::setNow(quint64 now) noexcept
{
    handTime = now;
}

QByteArray TestAlarmClock::Call::toText() const
{
    if (!milliseconds)
        return "alarm " + QByteArray::number(id) + " stopped";
    return "alarm " + QByteArray::number(id) + " started for " + QByteArray::number(*milliseconds) + " ms";
}

qint32 TestAlarmClock::start(quint32 milliseconds)
{
    m_runningId = ++m_lastId;
    m_runningTime = milliseconds;
    calls.push_back({m_runningId, milliseconds});
    return m_runningId;
}

void TestAlarmClock::stop(qint32 id)
{
    calls.push_back({id, std::nullopt});
    if (id == m_runningId)
        m_runningId = 0;
}

TestLogger::TestLogger()
{
    QtQuickCommon::setLogger(this);
}

TestLogger::~TestLogger()
{
    QtQuickCommon::setLogger(nullptr);
}

CompressionHarness::CompressionHarness()
    // The class must be known when the patterns are made.
    : sink((itemClass(), new StatementSink))
    , compressor(sink, &settings)
{
    compressor.setAlarmClock(&alarmClock);
    compressor.addObserver(this);
}

CompressionHarness::~CompressionHarness() = default;

void CompressionHarness::eat(const SyntheticEvent &event)
{
    if (event.timestamp > clock.now())
        clock.setNow(event.timestamp);
    compressor.eatEvent(event);
    noteAlarmCalls();
}

void CompressionHarness::pass(quint64 milliseconds)
{
    const quint64 until = clock.now() + milliseconds;
    while (alarmClock.runningId() != 0 && alarmClock.runningTime() > 0) {
        const quint64 due = m_alarmStarted + alarmClock.runningTime();
        if (due > until)
            break;
        clock.setNow(due);
        m_alarmStarted = due;
        compressor.alarm(alarmClock.runningId());
        noteAlarmCalls();
    }
    clock.setNow(until);
}

void CompressionHarness::flush()
{
    compressor.finishCompression();
    compressor.resetInput();
    noteAlarmCalls();
}

void CompressionHarness::noteAlarmCalls()
{
    // A start always gives a new id.
    if (m_notedAlarm != alarmClock.runningId())
        m_alarmStarted = clock.now();
    m_notedAlarm = alarmClock.runningId();
}

std::vector<Statement> CompressionHarness::takeStatementValues()
{
    return std::exchange(m_delivered, {});
}

std::vector<QByteArray> CompressionHarness::takeStatements()
{
    std::vector<QByteArray> lines;
    for (const Statement &statement : takeStatementValues())
        lines.push_back(statement.toText());
    return lines;
}

void CompressionHarness::handleCompressedEvent(const EventData &statement)
{
    m_delivered.push_back(sink->written.at(statement.objectName().toULong()));
}

} // namespace VantleTest
