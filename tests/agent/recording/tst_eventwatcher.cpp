#include "agent/recording/eventwatcher.h"

#include "agent/recording/statementmessages.h"
#include "hook/eventdata.h"
#include "hook/logger.h"
#include "hook/objectname.h"
#include "support/waiting.h"
#include "wrappers/qt/application.h"
#include "wrappers/qt/extensions/qtquick/qtquicksetup.h"
#include "wrappers/qt/extensions/qtquickcommon/diagnostics/logging.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QtCore/QThread>
#include <QtCore/QTimer>
#include <QtGui/QGuiApplication>
#include <QtGui/QMouseEvent>
#include <QtGui/QPointingDevice>
#include <QtGui/qpa/qwindowsysteminterface.h>
#include <QtQml/QQmlComponent>
#include <QtQml/QQmlEngine>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>

#include <memory>
#include <string>
#include <vector>

using namespace Vantle;

namespace {

const QByteArray scene = R"(
    import QtQuick
    Window {
        id: main; objectName: "main"; visible: true; x: 50; y: 60; width: 300; height: 200
        property bool saved: false
        Rectangle {
            objectName: "outer"; width: 100; height: 100
            MouseArea {
                objectName: "area"; anchors.fill: parent
                signal fired(); onClicked: fired()
            }
        }
        TextInput { objectName: "input"; y: 110; width: 100; height: 20 }
        TextInput { objectName: "otherInput"; y: 140; width: 100; height: 20 }
        Shortcut { sequence: "Ctrl+S"; onActivated: main.saved = true }
        Flickable {
            objectName: "flickable"; x: 150; width: 100; height: 200; contentHeight: 2000
            Rectangle { objectName: "content"; width: 100; height: 2000 }
        }
    })";

using Lines = std::vector<std::string>;

class NoLogger final : public Logger
{
    void info(const std::string &) override {}
    void warning(const std::string &message) override { ADD_FAILURE() << message; }
    void level3(const std::string &) override {}
    void level4(const std::string &) override {}
};

/// A scene on the screen, with somebody watching it.
class EventWatching : public testing::Test
{
protected:
    void SetUp() override
    {
        QtQuickCommon::setLogger(&m_logger);
        QtWrapper::setupQtQuick();
        m_application.setStatementHandler(
            [this](const EventData &statement) { statements.push_back(readable(statement).toStdString()); });
        QQmlComponent component(&m_engine);
        component.setData(scene, QUrl());
        window.reset(qobject_cast<QQuickWindow *>(component.create()));
        ASSERT_TRUE(window) << qPrintable(component.errorString());
        ASSERT_TRUE(VantleTest::waitUntil([this] { return window->isExposed(); }));
        window->requestActivate();
        ASSERT_TRUE(VantleTest::waitUntil([this] { return QGuiApplication::focusWindow() == window.get(); }));
        watcher.start();
    }

    /// "function object argument argument...", the object by its objectName,
    /// else its type.
    static QString readable(const EventData &statement)
    {
        const Protocol::Statement message = Agent::toMessage(statement);
        const ObjectName name(message.object);
        QString text = name.property(QStringLiteral("objectName")).stringValue();
        if (text.isEmpty())
            text = name.property(QStringLiteral("type")).stringValue();
        text.prepend(message.function + u' ');
        for (const Protocol::StatementArgument &argument : message.arguments)
            text += u' ' + argument.value.toVariant().toString();
        return text;
    }

    QQuickItem *find(const char *objectName) const
    {
        return window->findChild<QQuickItem *>(QString::fromLatin1(objectName));
    }

    void mouse(QEvent::Type type, QPointF local, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        const bool pressed = type == QEvent::MouseButtonPress || type == QEvent::MouseMove;
        QWindowSystemInterface::handleMouseEvent<QWindowSystemInterface::SynchronousDelivery>(
            window.get(), local, window->mapToGlobal(local), pressed ? Qt::LeftButton : Qt::NoButton,
            type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton, type, modifiers);
    }
    void click(QPointF local, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        mouse(QEvent::MouseButtonPress, local, modifiers);
        mouse(QEvent::MouseButtonRelease, local, modifiers);
    }
    /// Resizes the window as a user does, over a size in between.
    void drawOut(QSize size)
    {
        for (const QSize step : {size + QSize(5, 5), size}) {
            QWindowSystemInterface::handleGeometryChange<QWindowSystemInterface::SynchronousDelivery>(
                window.get(), QRect(window->position(), step));
        }
    }
    void keyEvent(QEvent::Type type, int code, Qt::KeyboardModifiers modifiers, const QString &text = {})
    {
        QWindowSystemInterface::handleKeyEvent<QWindowSystemInterface::SynchronousDelivery>(window.get(), type, code,
                                                                                            modifiers, text);
    }
    void key(int code, Qt::KeyboardModifiers modifiers, const QString &text)
    {
        keyEvent(QEvent::KeyPress, code, modifiers, text);
        keyEvent(QEvent::KeyRelease, code, modifiers, text);
    }

    /// All that was recorded so far, what was still held included.
    Lines recorded()
    {
        watcher.stop();
        return statements;
    }

private:
    NoLogger m_logger;
    QtWrapper::Application m_application;
    QQmlEngine m_engine;

protected:
    std::unique_ptr<QQuickWindow> window;
    Lines statements;
    Agent::EventWatcher watcher;
};

/// Counts the presses that reach an object and what is below it.
class PressCounter : public QObject
{
public:
    bool eventFilter(QObject *, QEvent *event) override
    {
        presses += event->type() == QEvent::MouseButtonPress;
        return false;
    }
    int presses = 0;
};

} // namespace

TEST_F(EventWatching, OneClickIsRecordedOnceThoughQtDeliversItToWindowAndItem)
{
    PressCounter counter;
    window->installEventFilter(&counter);
    find("area")->installEventFilter(&counter);
    click({12, 34});
    EXPECT_EQ(counter.presses, 2);
    EXPECT_EQ(recorded(), Lines({"mouseClick area 12 34 1"}));
}

TEST_F(EventWatching, DoubleClickIsRecordedAsOne)
{
    click({12, 34});
    mouse(QEvent::MouseButtonPress, {12, 34});
    mouse(QEvent::MouseButtonRelease, {12, 34});
    EXPECT_EQ(recorded(), Lines({"doubleClick area 12 34 1"}));
}

TEST_F(EventWatching, ClicksBesideItemsGoToTheWindow)
{
    click({290, 190});
    EXPECT_EQ(recorded(), Lines({"mouseClick main 290 190 1"}));
}

TEST_F(EventWatching, EventsOfTheProgramItselfAreNotRecorded)
{
    for (const QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
        QMouseEvent event(type, QPointF(12, 34), window->mapToGlobal(QPointF(12, 34)), Qt::LeftButton,
                          type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton, Qt::NoModifier);
        QCoreApplication::sendEvent(window.get(), &event);
    }
    EXPECT_EQ(recorded(), Lines());
}

TEST_F(EventWatching, EventsAreOnlyWatchedAndNeverTaken)
{
    QObject::connect(find("area"), SIGNAL(fired()), find("outer"), SLOT(forceActiveFocus()));
    click({12, 34});
    EXPECT_TRUE(find("outer")->hasActiveFocus());
    EXPECT_EQ(recorded(), Lines({"mouseClick area 12 34 1"}));
}

TEST_F(EventWatching, TypedTextGoesToTheFocusItem)
{
    find("input")->forceActiveFocus();
    key(Qt::Key_A, Qt::NoModifier, QStringLiteral("a"));
    key(Qt::Key_B, Qt::NoModifier, QStringLiteral("b"));
    EXPECT_EQ(find("input")->property("text").toString(), QStringLiteral("ab"));
    EXPECT_EQ(recorded(), Lines({"type input ab"}));
}

TEST_F(EventWatching, KeysBehindAShortcutWhoseModifierWasLetGoFirstAreNotLost)
{
    find("input")->forceActiveFocus();
    keyEvent(QEvent::KeyPress, Qt::Key_Control, Qt::ControlModifier);
    keyEvent(QEvent::KeyPress, Qt::Key_A, Qt::ControlModifier, QStringLiteral("\x01"));
    // As X11 has it: the release of a modifier doesn't name it.
    keyEvent(QEvent::KeyRelease, Qt::Key_Control, Qt::ControlModifier);
    keyEvent(QEvent::KeyRelease, Qt::Key_A, Qt::NoModifier, QStringLiteral("a"));
    key(Qt::Key_B, Qt::NoModifier, QStringLiteral("b"));
    key(Qt::Key_Return, Qt::NoModifier, QStringLiteral("\r"));
    EXPECT_EQ(recorded(), Lines({"type input <Ctrl+A>", "type input b", "type input <Return>"}));
}

TEST_F(EventWatching, TextBehindAnOpeningBracketWhoseShiftWasLetGoFirstIsNotLost)
{
    find("input")->forceActiveFocus();
    keyEvent(QEvent::KeyPress, Qt::Key_Shift, Qt::ShiftModifier);
    keyEvent(QEvent::KeyPress, Qt::Key_Less, Qt::ShiftModifier, QStringLiteral("<"));
    keyEvent(QEvent::KeyRelease, Qt::Key_Shift, Qt::NoModifier);
    keyEvent(QEvent::KeyRelease, Qt::Key_Less, Qt::NoModifier, QStringLiteral(","));
    key(Qt::Key_T, Qt::NoModifier, QStringLiteral("t"));
    key(Qt::Key_Greater, Qt::ShiftModifier, QStringLiteral(">"));
    EXPECT_EQ(recorded(), Lines({"type input <", "type input t>"}));
}

TEST_F(EventWatching, SizeThatAWindowGetsWhileItComesToTheScreenIsNotRecorded)
{
    drawOut({300, 250});
    click({12, 34});
    drawOut({320, 250});
    EXPECT_EQ(recorded(), Lines({"mouseClick area 12 34 1", "setWindowSize main 320 250"}));
}

TEST_F(EventWatching, SizeIsRecordedWithoutAClickOnceTheWindowHasSettled)
{
    Agent::EventWatcher impatient(std::chrono::milliseconds(4));
    watcher.stop();
    impatient.start();
    drawOut({280, 220});
    int turns = 0;
    QTimer slower;
    QObject::connect(&slower, &QTimer::timeout, [&turns] { ++turns; });
    slower.start(5);
    ASSERT_TRUE(VantleTest::waitUntil([&turns] { return turns >= 8; }));
    drawOut({300, 250});
    impatient.stop();
    EXPECT_EQ(recorded(), Lines({"setWindowSize main 300 250"}));
}

TEST_F(EventWatching, EventThatWaitedBehindALongFirstPictureIsNotRecorded)
{
    Agent::EventWatcher impatient(std::chrono::milliseconds(40));
    watcher.stop();
    impatient.start();
    QThread::msleep(100);
    QWindowSystemInterface::handleGeometryChange(window.get(), QRect(window->position(), QSize(305, 255)));
    QWindowSystemInterface::handleGeometryChange(window.get(), QRect(window->position(), QSize(300, 250)));
    ASSERT_TRUE(VantleTest::waitUntil([this] { return window->height() == 250; }));
    impatient.stop();
    EXPECT_EQ(recorded(), Lines());
}

TEST_F(EventWatching, WindowSettlesAnewWhenItIsShownAgain)
{
    click({12, 34});
    window->hide();
    window->show();
    ASSERT_TRUE(VantleTest::waitUntil([this] { return window->isExposed(); }));
    drawOut({300, 250});
    EXPECT_EQ(recorded(), Lines({"mouseClick area 12 34 1"}));
}

TEST_F(EventWatching, ShortcutIsRecordedThoughNoKeyPressFollows)
{
    key(Qt::Key_S, Qt::ControlModifier, QStringLiteral("\x13"));
    EXPECT_TRUE(window->property("saved").toBool());
    EXPECT_EQ(recorded(), Lines({"type main <Ctrl+S>"}));
}

TEST_F(EventWatching, TextAndTheSpecialKeyBehindItAreBothRecorded)
{
    find("input")->forceActiveFocus();
    key(Qt::Key_A, Qt::NoModifier, QStringLiteral("a"));
    key(Qt::Key_Tab, Qt::NoModifier, QStringLiteral("\t"));
    EXPECT_EQ(recorded(), Lines({"type input a", "type input <Tab>"}));
}

// As X11 reports them, the modifiers of a key event are those ahead of it; Qt
// adds the key itself at its press and takes it off at its release.

TEST_F(EventWatching, ClickCarriesTheModifierThatIsHeld)
{
    keyEvent(QEvent::KeyPress, Qt::Key_Control, Qt::NoModifier);
    click({12, 34}, Qt::ControlModifier);
    EXPECT_EQ(recorded(), Lines({"mouseClick area 12 34 67108864 1"}));
}

TEST_F(EventWatching, ModifierEndsThoughItsReleaseDoesNotNameIt)
{
    keyEvent(QEvent::KeyPress, Qt::Key_Control, Qt::NoModifier);
    click({12, 34}, Qt::ControlModifier);
    keyEvent(QEvent::KeyRelease, Qt::Key_Control, Qt::ControlModifier);
    click({56, 78});
    EXPECT_EQ(recorded(), Lines({"mouseClick area 12 34 67108864 1", "mouseClick area 56 78 1"}));
}

TEST_F(EventWatching, OtherModifierStaysWhenOneEnds)
{
    keyEvent(QEvent::KeyPress, Qt::Key_Control, Qt::NoModifier);
    keyEvent(QEvent::KeyPress, Qt::Key_Shift, Qt::ControlModifier);
    click({12, 34}, Qt::ControlModifier | Qt::ShiftModifier);
    keyEvent(QEvent::KeyRelease, Qt::Key_Shift, Qt::ControlModifier | Qt::ShiftModifier);
    click({56, 78}, Qt::ControlModifier);
    keyEvent(QEvent::KeyRelease, Qt::Key_Control, Qt::ControlModifier);
    click({90, 90});
    EXPECT_EQ(recorded(),
              Lines({"mouseClick area 12 34 100663296 1", "mouseClick area 56 78 67108864 1",
                     "mouseClick area 90 90 1"}));
}

TEST_F(EventWatching, TextThatWaitsIsKeptWhenAModifierTurnsOutToBeUp)
{
    find("input")->forceActiveFocus();
    keyEvent(QEvent::KeyPress, Qt::Key_Shift, Qt::NoModifier);
    key(Qt::Key_A, Qt::ShiftModifier, QStringLiteral("A"));
    keyEvent(QEvent::KeyRelease, Qt::Key_Shift, Qt::ShiftModifier);
    click({12, 34});
    EXPECT_EQ(recorded(), Lines({"type input A", "mouseClick area 12 34 1"}));
}

TEST_F(EventWatching, NoModifierOutlivesTheWatch)
{
    keyEvent(QEvent::KeyPress, Qt::Key_Control, Qt::NoModifier);
    watcher.stop();
    watcher.start();
    click({12, 34});
    EXPECT_EQ(recorded(), Lines({"mouseClick area 12 34 1"}));
}

TEST_F(EventWatching, TextOfAnInputMethodIsRecordedForTheFocusItem)
{
    find("input")->forceActiveFocus();
    ASSERT_EQ(QGuiApplication::focusObject(), find("input"));
    QInputMethodEvent event;
    event.setCommitString(QStringLiteral("世界"));
    QCoreApplication::sendEvent(find("input"), &event);
    EXPECT_EQ(recorded(), Lines({"type input 世界"}));
}

TEST_F(EventWatching, TextOfAnInputMethodForOtherObjectsIsNotRecorded)
{
    find("input")->forceActiveFocus();
    QInputMethodEvent event;
    event.setCommitString(QStringLiteral("x"));
    QCoreApplication::sendEvent(find("otherInput"), &event);
    EXPECT_EQ(recorded(), Lines());
}

TEST_F(EventWatching, TextOfAnInputMethodThatTheWindowPassesOnIsRecordedOnce)
{
    find("input")->forceActiveFocus();
    QInputMethodEvent event;
    event.setCommitString(QStringLiteral("x"));
    QCoreApplication::sendEvent(window.get(), &event);
    EXPECT_EQ(find("input")->property("text").toString(), QStringLiteral("x"));
    EXPECT_EQ(recorded(), Lines({"type input x"}));
}

TEST_F(EventWatching, TextThatAnInputMethodHasNotCommittedIsNotRecorded)
{
    find("input")->forceActiveFocus();
    QInputMethodEvent event(QStringLiteral("preedit"), {});
    QCoreApplication::sendEvent(find("input"), &event);
    EXPECT_EQ(recorded(), Lines());
}

TEST_F(EventWatching, WheelIsRecorded)
{
    const QPointF local(12, 34);
    QWindowSystemInterface::handleWheelEvent(window.get(), local, window->mapToGlobal(local), QPoint(), QPoint(0, 120));
    QWindowSystemInterface::flushWindowSystemEvents();
    EXPECT_EQ(recorded(), Lines({"mouseWheel area 12 34 0 15 0"}));
}

TEST_F(EventWatching, FlickIsRecordedWhenItEnds)
{
    mouse(QEvent::MouseButtonPress, {200, 150});
    for (int y = 140; y >= 40; y -= 10)
        mouse(QEvent::MouseMove, {200, static_cast<qreal>(y)});
    mouse(QEvent::MouseButtonRelease, {200, 40});
    ASSERT_GT(find("flickable")->property("contentY").toReal(), 0);
    ASSERT_TRUE(VantleTest::waitUntil([this] { return !find("flickable")->property("moving").toBool(); }));
    const Lines all = recorded();
    ASSERT_EQ(all.size(), 1U);
    EXPECT_THAT(all.front(), testing::StartsWith("flick flickable 0 "));
}

TEST_F(EventWatching, WindowClosedByTheUserIsRecorded)
{
    QWindowSystemInterface::handleCloseEvent<QWindowSystemInterface::SynchronousDelivery>(window.get());
    EXPECT_EQ(recorded(), Lines({"closeWindow main"}));
}

TEST_F(EventWatching, WindowClosedByTheProgramIsNotRecorded)
{
    window->close();
    EXPECT_EQ(recorded(), Lines());
}

TEST_F(EventWatching, ClickThatClosesTheWindowIsAllThatIsRecorded)
{
    QObject::connect(find("area"), SIGNAL(fired()), window.get(), SLOT(close()));
    click({12, 34});
    EXPECT_FALSE(window->isVisible());
    EXPECT_EQ(recorded(), Lines({"mouseClick area 12 34 1"}));
}

TEST_F(EventWatching, ClickThatDestroysTheWindowIsRecorded)
{
    const QPointer<QQuickWindow> guard(window.release());
    QObject::connect(guard->findChild<QQuickItem *>(QStringLiteral("area")), SIGNAL(fired()), guard,
                     SLOT(deleteLater()));
    const QPointF local(12, 34);
    for (const QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
        QWindowSystemInterface::handleMouseEvent<QWindowSystemInterface::SynchronousDelivery>(
            guard, local, guard->mapToGlobal(local), type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton,
            Qt::LeftButton, type);
    }
    ASSERT_TRUE(VantleTest::waitUntil([&] { return !guard; }));
    EXPECT_EQ(recorded(), Lines({"mouseClick area 12 34 1"}));
}

TEST_F(EventWatching, PressOnAWindowThatDiesBeforeTheReleaseIsNothing)
{
    mouse(QEvent::MouseButtonPress, {12, 34});
    window.reset();
    EXPECT_EQ(recorded(), Lines());
}

TEST_F(EventWatching, HeldClickComesOutWhenTheWatchEnds)
{
    click({12, 34});
    EXPECT_EQ(statements, Lines());
    watcher.stop();
    EXPECT_EQ(statements, Lines({"mouseClick area 12 34 1"}));
}

TEST_F(EventWatching, HeldClickComesOutByItselfAfterAWhile)
{
    click({12, 34});
    EXPECT_TRUE(VantleTest::waitUntil([this] { return !statements.empty(); }));
    EXPECT_EQ(statements, Lines({"mouseClick area 12 34 1"}));
}

TEST_F(EventWatching, NothingIsRecordedAfterTheEnd)
{
    watcher.stop();
    click({12, 34});
    key(Qt::Key_A, Qt::NoModifier, QStringLiteral("a"));
    watcher.stop();
    EXPECT_EQ(statements, Lines());
}

TEST_F(EventWatching, CanBeginAgain)
{
    watcher.start();
    click({12, 34});
    watcher.stop();
    click({1, 1});
    watcher.start();
    click({56, 78});
    EXPECT_EQ(recorded(), Lines({"mouseClick area 12 34 1", "mouseClick area 56 78 1"}));
}

TEST_F(EventWatching, WatcherThatNeverBeganEndsNothing)
{
    {
        Agent::EventWatcher idle;
        idle.stop();
    }
    click({12, 34});
    EXPECT_EQ(recorded(), Lines({"mouseClick area 12 34 1"}));
}

TEST_F(EventWatching, TapIsRecorded)
{
    static QPointingDevice *const screen = [] {
        auto *const device = new QPointingDevice(QStringLiteral("screen"), 77, QInputDevice::DeviceType::TouchScreen,
                                                 QPointingDevice::PointerType::Finger,
                                                 QInputDevice::Capability::Position, 5, 0, QString(),
                                                 QPointingDeviceUniqueId(), qApp);
        QWindowSystemInterface::registerInputDevice(device);
        return device;
    }();
    for (const QEventPoint::State state : {QEventPoint::Pressed, QEventPoint::Released}) {
        QWindowSystemInterface::TouchPoint point;
        point.id = 1;
        point.state = state;
        point.area = QRectF(0, 0, 1, 1);
        point.area.moveCenter(window->mapToGlobal(QPointF(12, 34)));
        QWindowSystemInterface::handleTouchEvent<QWindowSystemInterface::SynchronousDelivery>(window.get(), screen,
                                                                                              {point});
    }
    const Lines all = recorded();
    ASSERT_EQ(all.size(), 1U);
    EXPECT_THAT(all.front(), testing::StartsWith("tapObject area "));
}
