#pragma once

#include "hook/logger.h"
#include "support/compressionobjects.h"
#include "wrappers/qt/extensions/qtquickcommon/compression/eventcompressor.h"

#include <optional>
#include <string>
#include <vector>

namespace VantleTest {

/// The clock of recording, ticked by hand. One at a time; the system clock is
/// back when it goes.
class HandClock
{
public:
    explicit HandClock(quint64 now = 0);
    ~HandClock();

    quint64 now() const noexcept;
    void setNow(quint64 now) noexcept;

private:
    Q_DISABLE_COPY_MOVE(HandClock)
};

/// Settings that a test can change at any time.
struct TestSettings : public Vantle::QtWrapper::UISettings
{
    qint32 dragDistance() const override { return distance; }
    quint32 doubleClickTime() const override { return time; }

    qint32 distance = 4;
    quint32 time = 400;
};

/// Keeps the alarms that were asked for. Ids count from 1.
class TestAlarmClock : public Vantle::QtWrapper::AlarmClock
{
public:
    /// One call: start, with the time asked for, or stop.
    struct Call
    {
        qint32 id = 0;
        std::optional<quint32> milliseconds;

        bool operator==(const Call &) const = default;
        QByteArray toText() const;
    };

    qint32 start(quint32 milliseconds) override;
    void stop(qint32 id) override;

    /// The alarm that was started last and not stopped, or 0.
    qint32 runningId() const noexcept { return m_runningId; }
    /// For how long it was started, in milliseconds.
    quint32 runningTime() const noexcept { return m_runningTime; }

    std::vector<Call> calls;

private:
    qint32 m_lastId = 0;
    qint32 m_runningId = 0;
    quint32 m_runningTime = 0;
};

/// Keeps the log. The libraries log here from its construction on, and must
/// not log any more once it is gone.
class TestLogger : public Vantle::Logger
{
public:
    TestLogger();
    ~TestLogger() override;

    void info(const std::string &message) override { lines.push_back(message); }
    void warning(const std::string &message) override { lines.push_back("warning: " + message); }
    void level3(const std::string &message) override { lines.push_back("level3: " + message); }
    void level4(const std::string &message) override { lines.push_back("level4: " + message); }

    std::vector<std::string> lines;
};

/// A compressor with everything around it that a test looks at or turns.
class CompressionHarness : private Vantle::QtWrapper::EventCompressorObserver
{
public:
    CompressionHarness();
    ~CompressionHarness() override;

    /// Feeds an event and, if it is later, sets the clock to its time.
    void eat(const Vantle::QtWrapper::SyntheticEvent &event);
    /// Lets time pass. An alarm that falls due rings, and rings again as a repeating timer does.
    void pass(quint64 milliseconds);
    /// Finishes and resets, as recording does.
    void flush();

    /// What reached the observers since the last call, one line each.
    std::vector<QByteArray> takeStatements();
    /// Same, as values.
    std::vector<Statement> takeStatementValues();

    std::size_t queued() const { return compressor.pendingEvents().size(); }
    bool isAlarmRunning() const { return alarmClock.runningId() != 0; }

    HandClock clock;
    TestSettings settings;
    TestAlarmClock alarmClock;
    StatementSink *sink; ///< owned by the compressor
    Vantle::QtWrapper::EventCompressor compressor;

private:
    void handleCompressedEvent(const Vantle::EventData &statement) override;

    std::vector<Statement> m_delivered;
    quint64 m_alarmStarted = 0;
    qint32 m_notedAlarm = 0;
    void noteAlarmCalls();
};

} // namespace VantleTest
