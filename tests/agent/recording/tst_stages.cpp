#include "agent/recording/dragcrossing.h"
#include "agent/recording/hostpatterns.h"
#include "agent/recording/inputledger.h"
#include "agent/recording/textruns.h"
#include "hook/class.h"
#include "hook/inspector.h"
#include "hook/logger.h"
#include "hook/method.h"
#include "wrappers/qt/application.h"
#include "wrappers/qt/bynamefunctions.h"
#include "wrappers/qt/dragrules.h"
#include "wrappers/qt/wrapping.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QtCore/QDateTime>
#include <QtGui/QWindow>

#include <string>
#include <vector>

using namespace Vantle;
using QtWrapper::SyntheticEvent;

namespace {

constexpr int DragDistance = 10;

int dragDistance()
{
    return DragDistance;
}

using Lines = std::vector<std::string>;

/// The end of a line of stages: keeps what gets there.
class Sink final : public Agent::RecordStage
{
public:
    void take(const SyntheticEvent &record) override { records.push_back(record); }

    std::vector<SyntheticEvent> records;
};

SyntheticEvent keyPress(const QByteArray &text, int key = Qt::Key_A)
{
    SyntheticEvent record;
    record.type = SyntheticEvent::Key;
    record.keyEventType = SyntheticEvent::KeyPress;
    record.key = key;
    record.modifiers = Modifier::None;
    record.text = text;
    return record;
}

SyntheticEvent keyRelease(const QByteArray &text)
{
    SyntheticEvent record = keyPress(text);
    record.keyEventType = SyntheticEvent::KeyRelease;
    return record;
}

SyntheticEvent commit(const QByteArray &text)
{
    SyntheticEvent record;
    record.type = SyntheticEvent::InputMethod;
    record.inputMethodText = text;
    return record;
}

SyntheticEvent mouse(SyntheticEvent::MouseEventType type, QPoint global)
{
    SyntheticEvent record;
    record.type = SyntheticEvent::Mouse;
    record.mouseEventType = type;
    record.button = type == SyntheticEvent::Move ? MouseButton::None : MouseButton::LeftButton;
    record.globalX = global.x();
    record.globalY = global.y();
    record.x = 1;
    record.y = 2;
    record.ready = true;
    record.objectName = "thing";
    return record;
}

/// What is typed, by key or commit, in brackets for a commit.
Lines typed(const std::vector<SyntheticEvent> &records)
{
    Lines lines;
    for (const SyntheticEvent &record : records) {
        if (record.type == SyntheticEvent::InputMethod)
            lines.push_back("[" + record.inputMethodText.toStdString() + "]");
        else if (record.type == SyntheticEvent::Key && record.keyEventType == SyntheticEvent::KeyPress)
            lines.push_back(record.text.toStdString());
    }
    return lines;
}

class TextRun : public testing::Test
{
protected:
    TextRun() { runs.setNext(&sink); }

    void type(const QByteArray &text)
    {
        SyntheticEvent press = keyPress(text);
        press.object = object;
        runs.take(press);
        SyntheticEvent release = keyRelease(text);
        release.object = object;
        runs.take(release);
    }

    QtWrapper::Application application;
    QWindow native;
    SharedPtr<Object> object = QtWrapper::wrapAndRegisterQObject(&native);
    Sink sink;
    Agent::TextRuns runs;
};

/// How the release of a drag is told by \p sink: distance behind the crossing.
QPoint toldDistance(const Sink &sink)
{
    const SyntheticEvent &move = sink.records.at(1);
    const SyntheticEvent &release = sink.records.at(2);
    return {release.globalX - move.globalX, release.globalY - move.globalY};
}

std::optional<int> noLoss(const SyntheticEvent &)
{
    return std::nullopt;
}

std::optional<int> lossBeyondTen(const SyntheticEvent &)
{
    return 10;
}

void drag(Agent::DragCrossing *stage, const std::vector<QPoint> &way)
{
    stage->take(mouse(SyntheticEvent::Press, way.front()));
    for (const QPoint &place : way)
        stage->take(mouse(SyntheticEvent::Move, place));
    stage->take(mouse(SyntheticEvent::Release, way.back()));
}

} // namespace

TEST_F(TextRun, OfAsciiPassesAsItCame)
{
    type("a");
    type("b");
    EXPECT_EQ(typed(sink.records), Lines());
    runs.letGo();
    EXPECT_EQ(typed(sink.records), Lines({"a", "b"}));
}

TEST_F(TextRun, WithLettersBeyondAsciiIsOneCommit)
{
    for (const char *letter : {"p", "\u00e4", "s", "s"})
        type(letter);
    runs.letGo();
    EXPECT_EQ(typed(sink.records), Lines({"[p\u00e4ss]"}));
}

TEST_F(TextRun, OfCommitsIsOneCommit)
{
    for (const char *text : {"\u4e16", "\u754c"}) {
        SyntheticEvent record = commit(text);
        record.object = object;
        runs.take(record);
    }
    runs.letGo();
    EXPECT_EQ(typed(sink.records), Lines({"[\u4e16\u754c]"}));
}

TEST_F(TextRun, EndsAtASpecialKey)
{
    type("\u00e4");
    type("\u00f6");
    runs.take(keyPress("<Return>"));
    EXPECT_EQ(typed(sink.records), Lines({"[\u00e4\u00f6]", "<Return>"}));
}

TEST_F(TextRun, BehindAnOpeningBracketStaysSingleKeys)
{
    type("<");
    type("\u00e4");
    runs.letGo();
    EXPECT_EQ(typed(sink.records), Lines({"<", "\u00e4"}));
}

TEST_F(TextRun, GoesOnOverAModifierAndKeepsItForLater)
{
    type("\u00e4");
    SyntheticEvent shift = keyPress("", Qt::Key_Shift);
    shift.object = object;
    runs.take(shift);
    type("W");
    runs.letGo();
    EXPECT_EQ(typed(sink.records), Lines({"[\u00e4W]", ""}));
}

TEST(DragCrossing, OfADragInOneJumpIsWhereThePlayerCrosses)
{
    Sink sink;
    Agent::DragCrossing stage(dragDistance, noLoss);
    stage.setNext(&sink);
    drag(&stage, {{100, 100}, {100, 210}});
    ASSERT_EQ(sink.records.size(), 3U);
    const QPoint told = toldDistance(sink);
    EXPECT_EQ(QtWrapper::crossingOffset(told) + told, QPoint(0, 110));
}

TEST(DragCrossing, LeavesTheOtherMovesOut)
{
    Sink sink;
    Agent::DragCrossing stage(dragDistance, noLoss);
    stage.setNext(&sink);
    drag(&stage, {{0, 0}, {3, 0}, {50, 10}, {60, 60}, {200, 0}});
    ASSERT_EQ(sink.records.size(), 3U);
    const QPoint told = toldDistance(sink);
    EXPECT_EQ(QtWrapper::crossingOffset(told) + told, QPoint(200, 0));
}

TEST(DragCrossing, OfAPressThatComesBackIsNone)
{
    Sink sink;
    Agent::DragCrossing stage(dragDistance, noLoss);
    stage.setNext(&sink);
    drag(&stage, {{0, 0}, {80, 0}, {2, 0}});
    EXPECT_EQ(sink.records.size(), 2U);
}

TEST(DragCrossing, KeepsTheTimeOfTheMoveThatWasFarEnough)
{
    Sink sink;
    Agent::DragCrossing stage(dragDistance, noLoss);
    stage.setNext(&sink);
    stage.take(mouse(SyntheticEvent::Press, {0, 0}));
    SyntheticEvent near = mouse(SyntheticEvent::Move, {5, 0});
    near.timestamp = 1000;
    stage.take(near);
    SyntheticEvent far = mouse(SyntheticEvent::Move, {30, 0});
    far.timestamp = 2000;
    stage.take(far);
    stage.take(mouse(SyntheticEvent::Release, {90, 0}));
    ASSERT_EQ(sink.records.size(), 3U);
    EXPECT_EQ(sink.records.at(1).timestamp, 2000U);
}

// Moved pixel by pixel, what is dragged sets off at 11 pixels; the hand set off at 35.
TEST(DragCrossing, MakesUpForWhatAJumpLost)
{
    Sink sink;
    Agent::DragCrossing stage(dragDistance, lossBeyondTen);
    stage.setNext(&sink);
    drag(&stage, {{0, 0}, {35, 0}, {70, 0}, {105, 0}});
    ASSERT_EQ(sink.records.size(), 3U);
    EXPECT_EQ(toldDistance(sink), QPoint(105 - 35 + 11 - 10, 0));
}

namespace {

/// A ledger with somebody who listens.
class Ledger : public testing::Test
{
protected:
    Ledger()
    {
        ledger.setObservers(
            [this](const QString &text, const SyntheticEvent &) { remarks.push_back(text.toStdString()); },
            [this](const QList<EventData> &statements) {
                outlook.clear();
                for (const EventData &statement : statements)
                    outlook.push_back(statement.method()->name().toStdString());
            });
    }

    SyntheticEvent at(quint64 time, SyntheticEvent record)
    {
        record.timestamp = time;
        return record;
    }

    static EventData statement(const Method *method, quint64 time, const ObjectList &arguments = {})
    {
        EventData result(method, QStringLiteral("thing"), arguments);
        result.time = QDateTime::fromMSecsSinceEpoch(static_cast<qint64>(time)).time();
        return result;
    }

    QtWrapper::Application application;
    Agent::InputLedger ledger{dragDistance};
    Lines remarks;
    Lines outlook;
};

} // namespace

TEST_F(Ledger, SaysNothingOfWhatBecameAStatement)
{
    ledger.take(at(1000, mouse(SyntheticEvent::Press, {0, 0})));
    ledger.take(at(1050, mouse(SyntheticEvent::Release, {0, 0})));
    ledger.noteStatement(statement(QtWrapper::mouseClickOCBByNameFn(), 1000));
    ledger.settle();
    EXPECT_EQ(remarks, Lines());
}

TEST_F(Ledger, RemarksWhatALaterStatementHasOvertaken)
{
    ledger.take(at(1000, mouse(SyntheticEvent::Press, {0, 0})));
    ledger.take(at(2000, mouse(SyntheticEvent::Press, {0, 0})));
    ledger.take(at(2050, mouse(SyntheticEvent::Release, {0, 0})));
    ledger.noteStatement(statement(QtWrapper::mouseClickOCBByNameFn(), 2000));
    ASSERT_EQ(remarks.size(), 1U);
    EXPECT_THAT(remarks.front(), testing::StartsWith("a press on thing: "));
}

TEST_F(Ledger, CountsBothPressesOfADoubleClick)
{
    for (const quint64 time : {1000U, 1200U}) {
        ledger.take(at(time, mouse(SyntheticEvent::Press, {0, 0})));
        ledger.take(at(time + 50, mouse(SyntheticEvent::Release, {0, 0})));
    }
    ledger.noteStatement(statement(QtWrapper::doubleClickOCBByNameFn(), 1000));
    ledger.settle();
    EXPECT_EQ(remarks, Lines());
}

TEST_F(Ledger, CountsTheKeysOfAText)
{
    for (const char *letter : {"a", "b", "c"})
        ledger.take(keyPress(letter));
    ledger.noteStatement(statement(QtWrapper::typeByNameFn(), 1000, {Inspector::self()->createString("ab")}));
    EXPECT_EQ(remarks, Lines());
    ledger.settle();
    EXPECT_EQ(remarks.size(), 1U);
}

TEST_F(Ledger, RemarksAKeyThatScriptsCannotType)
{
    Sink sink;
    ledger.setNext(&sink);
    ledger.take(keyPress("\n"));
    EXPECT_EQ(sink.records.size(), 0U);
    EXPECT_EQ(remarks.size(), 1U);
}

TEST_F(Ledger, ForeseesWhatWouldBeWritten)
{
    ledger.take(mouse(SyntheticEvent::Press, {0, 0}));
    EXPECT_EQ(outlook, Lines({"mousePress"}));
    ledger.take(mouse(SyntheticEvent::Release, {2, 0}));
    EXPECT_EQ(outlook, Lines({"mouseClick"}));
}

TEST_F(Ledger, ForeseesAPressThatIsBeingDelivered)
{
    const SyntheticEvent press = mouse(SyntheticEvent::Press, {0, 0});
    ledger.foresee(press);
    EXPECT_EQ(outlook, Lines({"mousePress"}));
    ledger.take(press);
    EXPECT_EQ(outlook, Lines({"mousePress"}));
}

TEST_F(Ledger, ForeseesDrags)
{
    ledger.take(mouse(SyntheticEvent::Press, {0, 0}));
    ledger.take(mouse(SyntheticEvent::Release, {50, 0}));
    EXPECT_EQ(outlook, Lines({"mouseDrag"}));
}

TEST_F(Ledger, ForeseesNothingMoreOfWhatWasWritten)
{
    ledger.take(at(1000, mouse(SyntheticEvent::Press, {0, 0})));
    ledger.take(at(1010, mouse(SyntheticEvent::Release, {0, 0})));
    ledger.noteStatement(statement(QtWrapper::mouseClickOCBByNameFn(), 1000));
    ledger.take(at(3000, mouse(SyntheticEvent::Press, {0, 0})));
    EXPECT_EQ(outlook, Lines({"mousePress"}));
}

namespace {

class HostPattern : public testing::Test
{
protected:
    HostPattern()
    {
        patterns.setNext(&sink);
        application.setStatementHandler(
            [this](const EventData &statement) { statements.push_back(statement.method()->name().toStdString()); });
    }

    QtWrapper::Application application;
    Sink sink;
    Lines statements;
    int ends = 0;
    Agent::HostPatterns patterns{[this](const SyntheticEvent &) { ++ends; }, dragDistance};
};

SyntheticEvent timed(quint64 time, SyntheticEvent record)
{
    record.timestamp = time;
    return record;
}

} // namespace

TEST_F(HostPattern, TellsAPressThatIsHeldByItsLength)
{
    patterns.take(timed(1000, mouse(SyntheticEvent::Press, {0, 0})));
    patterns.take(timed(4000, mouse(SyntheticEvent::Release, {0, 0})));
    EXPECT_EQ(statements, Lines({"mousePress", "snooze", "mouseRelease"}));
    EXPECT_EQ(sink.records.size(), 1U);
    EXPECT_EQ(ends, 1);
}

TEST_F(HostPattern, LeavesClicksAndDragsAlone)
{
    patterns.take(timed(1000, mouse(SyntheticEvent::Press, {0, 0})));
    patterns.take(timed(1900, mouse(SyntheticEvent::Release, {0, 0})));
    patterns.take(timed(2000, mouse(SyntheticEvent::Press, {0, 0})));
    patterns.take(timed(6000, mouse(SyntheticEvent::Release, {50, 0})));
    EXPECT_EQ(statements, Lines());
    EXPECT_EQ(sink.records.size(), 4U);
}

TEST_F(HostPattern, TellsAModifierThatIsPressedAlone)
{
    const SyntheticEvent shift = keyPress("", Qt::Key_Shift);
    patterns.take(shift);
    patterns.takeModifierRelease(shift);
    EXPECT_EQ(statements, Lines({"keyPress", "keyRelease"}));
}

TEST_F(HostPattern, TellsNoModifierThatWasHeldForSomething)
{
    const SyntheticEvent shift = keyPress("", Qt::Key_Shift);
    patterns.take(shift);
    patterns.take(mouse(SyntheticEvent::Press, {0, 0}));
    patterns.takeModifierRelease(shift);
    EXPECT_EQ(statements, Lines());
}

TEST_F(HostPattern, TellsWhatTheWindowSystemDrops)
{
    patterns.takeDrop(mouse(SyntheticEvent::Release, {90, 0}));
    EXPECT_EQ(statements, Lines());
    patterns.take(mouse(SyntheticEvent::Press, {0, 0}));
    patterns.takeDrop(mouse(SyntheticEvent::Release, {90, 0}));
    EXPECT_EQ(statements, Lines({"dragAndDrop"}));
}
