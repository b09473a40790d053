#include "wrappers/qt/extensions/qtquickcommon/recording/qteventrecorder.h"

#include "hook/class.h"
#include "hook/method.h"
#include "support/compressionharness.h"
#include "support/waiting.h"
#include "wrappers/qt/application.h"
#include "wrappers/qt/bynamefunctions.h"
#include "wrappers/qt/extensions/qtquick/qtquicksetup.h"
#include "wrappers/qt/extensions/qtquickcommon/compression/currenttime.h"
#include "wrappers/qt/extensions/qtquickcommon/identity/qualifiednames.h"
#include "wrappers/qt/extensions/qtquickcommon/recording/qtalarmclock.h"
#include "wrappers/qt/extensions/qtquickcommon/recording/qteventtranslation.h"
#include "wrappers/qt/wrapping.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QtCore/QAbstractEventDispatcher>
#include <QtCore/QElapsedTimer>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtGui/QGuiApplication>
#include <QtGui/QMouseEvent>
#include <QtGui/QStyleHints>
#include <QtGui/qpa/qwindowsysteminterface.h>
#include <QtQml/QQmlComponent>
#include <QtQml/QQmlEngine>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickView>

#include <vector>

using namespace Vantle;
using namespace Vantle::QtWrapper;

namespace {

using Methods = std::vector<const Method *>;

class EventRecording : public testing::Test
{
protected:
    EventRecording() { makeApplication({}); }
    ~EventRecording() override
    {
        QGuiApplication::styleHints()->setMouseDoubleClickInterval(400);
        QGuiApplication::styleHints()->setStartDragDistance(10);
    }

    void makeApplication(const WrapperConfig &config)
    {
        application.reset();
        application = std::make_unique<Application>(config);
        setupQtQuick();
        application->setStatementHandler([this](const EventData &statement) {
            methods.push_back(statement.method());
            names.push_back(statement.objectName());
        });
    }

    SyntheticEvent mouse(SyntheticEvent::MouseEventType type, int x = 0,
                         MouseButton::Value button = MouseButton::LeftButton) const
    {
        SyntheticEvent event;
        event.type = SyntheticEvent::Mouse;
        event.mouseEventType = type;
        event.button = button;
        event.globalX = event.x = x;
        event.globalY = event.y = 0;
        event.object = object;
        event.objectName = "Window Thing";
        event.objectClass = object->objectClass();
        event.ready = true;
        return event;
    }

    void click(const SharedPtr<QtEventRecorder> &recorder)
    {
        recorder->eatEvent(mouse(SyntheticEvent::Press));
        recorder->eatEvent(mouse(SyntheticEvent::Release));
    }

    VantleTest::TestLogger logger;
    std::unique_ptr<Application> application;
    QObject thing;
    SharedPtr<Object> object = wrapAndRegisterQObject(&thing);
    Methods methods;
    std::vector<QString> names;
};

} // namespace

TEST_F(EventRecording, ThereIsOneRecorderAndEachHolderCounts)
{
    const SharedPtr<QtEventRecorder> first = QtEventRecorder::instance();
    EXPECT_EQ(first->referenceCount(), 1);
    const SharedPtr<QtEventRecorder> second = QtEventRecorder::instance();
    EXPECT_EQ(first.get(), second.get());
    EXPECT_EQ(first->referenceCount(), 2);
}

TEST_F(EventRecording, RecorderGoesWithItsLastHolderAndTheNextOneStartsEmpty)
{
    SharedPtr<QtEventRecorder> recorder = QtEventRecorder::instance();
    recorder->eatEvent(mouse(SyntheticEvent::Press));
    recorder = nullptr;

    recorder = QtEventRecorder::instance();
    EXPECT_EQ(recorder->referenceCount(), 1);
    recorder->eatEvent(mouse(SyntheticEvent::Release));
    recorder->flushEventQueue();
    EXPECT_TRUE(methods.empty());
    click(recorder);
    recorder->flushEventQueue();
    EXPECT_EQ(methods, Methods{mouseClickOCBByNameFn()});
}

TEST_F(EventRecording, ConfigurationIsReadAnewByEachRecorder)
{
    SharedPtr<QtEventRecorder> recorder = QtEventRecorder::instance();
    click(recorder);
    recorder->flushEventQueue();
    recorder = nullptr;

    WrapperConfig config;
    config.classesWithoutCoordinates = {"QObject"};
    makeApplication(config);
    recorder = QtEventRecorder::instance();
    click(recorder);
    recorder->flushEventQueue();
    EXPECT_EQ(methods, (Methods{mouseClickOCBByNameFn(), mouseClickOByNameFn()}));
}

TEST_F(EventRecording, ClickIsHeldUntilTheAlarmRings)
{
    QGuiApplication::styleHints()->setMouseDoubleClickInterval(50);
    const SharedPtr<QtEventRecorder> recorder = QtEventRecorder::instance();
    click(recorder);
    EXPECT_TRUE(methods.empty());
    QElapsedTimer timer;
    timer.start();
    ASSERT_TRUE(VantleTest::waitUntil([this] { return !methods.empty(); }));
    // Coarse timers may be 5% early.
    EXPECT_GE(timer.elapsed(), 90);
    EXPECT_EQ(methods, Methods{mouseClickOCBByNameFn()});
    EXPECT_EQ(names.front(), QStringLiteral("Window Thing"));
}

TEST_F(EventRecording, AlarmThatRingsOnDoesNotReleaseTheNextClick)
{
    QGuiApplication::styleHints()->setMouseDoubleClickInterval(10);
    const SharedPtr<QtEventRecorder> recorder = QtEventRecorder::instance();
    click(recorder);
    ASSERT_TRUE(VantleTest::waitUntil([this] { return methods.size() == 1; }));
    // The timer of 20 ms rings on. A click that it released would leave once it
    // is older than the double-click interval; with its own alarm it leaves
    // after twice that. Timers may be early by a twentieth.
    QGuiApplication::styleHints()->setMouseDoubleClickInterval(200);
    QElapsedTimer elapsed;
    elapsed.start();
    click(recorder);
    ASSERT_TRUE(VantleTest::waitUntil([this] { return methods.size() == 2; }));
    EXPECT_GE(elapsed.elapsed(), 370);
}

TEST_F(EventRecording, SecondPressInTimeMakesADoubleClickAtOnce)
{
    const SharedPtr<QtEventRecorder> recorder = QtEventRecorder::instance();
    click(recorder);
    recorder->eatEvent(mouse(SyntheticEvent::Press));
    EXPECT_EQ(methods, Methods{doubleClickOCBByNameFn()});
    recorder->eatEvent(mouse(SyntheticEvent::Release));
    recorder->flushEventQueue();
    EXPECT_EQ(methods.size(), 1u);
}

TEST_F(EventRecording, FlushWritesAHeldClickAtOnceAndOnce)
{
    QGuiApplication::styleHints()->setMouseDoubleClickInterval(10);
    const SharedPtr<QtEventRecorder> recorder = QtEventRecorder::instance();
    click(recorder);
    recorder->flushEventQueue();
    EXPECT_EQ(methods, Methods{mouseClickOCBByNameFn()});
    recorder->flushEventQueue();
    EXPECT_EQ(methods.size(), 1u);
}

TEST_F(EventRecording, FlushDropsAnUnfinishedPattern)
{
    const SharedPtr<QtEventRecorder> recorder = QtEventRecorder::instance();
    recorder->eatEvent(mouse(SyntheticEvent::Press));
    recorder->flushEventQueue();
    recorder->eatEvent(mouse(SyntheticEvent::Release));
    recorder->flushEventQueue();
    EXPECT_TRUE(methods.empty());
}

TEST_F(EventRecording, FlushForgetsHeldModifiers)
{
    const SharedPtr<QtEventRecorder> recorder = QtEventRecorder::instance();
    SyntheticEvent shift = mouse(SyntheticEvent::Press);
    shift.type = SyntheticEvent::Key;
    shift.keyEventType = SyntheticEvent::KeyPress;
    shift.key = Qt::Key_Shift;
    shift.modifiers = Modifier::Shift;
    shift.text = "";
    recorder->eatEvent(shift);
    recorder->flushEventQueue();
    click(recorder);
    recorder->flushEventQueue();
    EXPECT_EQ(methods, Methods{mouseClickOCBByNameFn()});
}

TEST_F(EventRecording, FlushOfAnEmptyQueueDeliversNothing)
{
    const SharedPtr<QtEventRecorder> recorder = QtEventRecorder::instance();
    recorder->flushEventQueue();
    recorder->flushEventQueue();
    EXPECT_TRUE(methods.empty());
}

TEST_F(EventRecording, FlushLeavesTheConfigurationAlone)
{
    WrapperConfig config;
    config.classesWithoutCoordinates = {"QObject"};
    config.compressionDebugLevel = 1;
    makeApplication(config);
    const SharedPtr<QtEventRecorder> recorder = QtEventRecorder::instance();
    recorder->flushEventQueue();
    click(recorder);
    EXPECT_THAT(logger.lines, testing::Contains(testing::StartsWith("EventCompressor::eatEvent: ")));
    recorder->flushEventQueue();
    EXPECT_EQ(methods, Methods{mouseClickOByNameFn()});
}

TEST_F(EventRecording, FeedingFromWithinTheHandlerIsSafe)
{
    const SharedPtr<QtEventRecorder> recorder = QtEventRecorder::instance();
    int delivered = 0;
    application->setStatementHandler([&](const EventData &) {
        if (++delivered == 1)
            recorder->eatEvent(mouse(SyntheticEvent::Press));
    });
    click(recorder);
    recorder->flushEventQueue();
    EXPECT_EQ(delivered, 1);
}

TEST_F(EventRecording, StatementsWithoutAHandlerAreDropped)
{
    application->setStatementHandler({});
    const SharedPtr<QtEventRecorder> recorder = QtEventRecorder::instance();
    click(recorder);
    recorder->flushEventQueue();
    EXPECT_TRUE(methods.empty());
}

TEST_F(EventRecording, HandleCompressedEventPassesTheStatementOn)
{
    EventData statement(closeWindowByNameFn(), QStringLiteral("Any"), {});
    QtEventRecorder::instance()->handleCompressedEvent(statement);
    EXPECT_EQ(methods, Methods{closeWindowByNameFn()});
    EXPECT_EQ(names.front(), QStringLiteral("Any"));
}

TEST_F(EventRecording, ObjectsOfAQueuedEventMayDie)
{
    const SharedPtr<QtEventRecorder> recorder = QtEventRecorder::instance();
    auto *mortal = new QObject;
    object = wrapAndRegisterQObject(mortal);
    recorder->eatEvent(mouse(SyntheticEvent::Press));
    delete mortal;
    recorder->eatEvent(mouse(SyntheticEvent::Release));
    recorder->flushEventQueue();
    EXPECT_EQ(methods, Methods{mouseClickOCBByNameFn()});
    EXPECT_EQ(names.front(), QStringLiteral("Window Thing"));
}

TEST_F(EventRecording, StyleHintsAreReadAtEachCall)
{
    const SharedPtr<QtEventRecorder> recorder = QtEventRecorder::instance();
    QGuiApplication::styleHints()->setMouseDoubleClickInterval(123);
    QGuiApplication::styleHints()->setStartDragDistance(45);
    EXPECT_EQ(recorder->doubleClickTime(), 123u);
    EXPECT_EQ(recorder->dragDistance(), 45);
    QGuiApplication::styleHints()->setMouseDoubleClickInterval(456);
    QGuiApplication::styleHints()->setStartDragDistance(7);
    EXPECT_EQ(recorder->doubleClickTime(), 456u);
    EXPECT_EQ(recorder->dragDistance(), 7);
}

TEST_F(EventRecording, DragDistanceIsThatOfTheStyleHints)
{
    const SharedPtr<QtEventRecorder> recorder = QtEventRecorder::instance();
    const auto dragBy = [&](int distance) {
        recorder->eatEvent(mouse(SyntheticEvent::Press));
        recorder->eatEvent(mouse(SyntheticEvent::Release, distance));
        recorder->flushEventQueue();
    };
    QGuiApplication::styleHints()->setStartDragDistance(30);
    dragBy(29);
    dragBy(30);
    EXPECT_EQ(methods, (Methods{mouseClickOCBByNameFn(), mouseDragByNameFn()}));
}

namespace {

class Ringing : public AlarmClockObserver
{
public:
    void alarm(qint32 id) override { rung.push_back(id); }
    std::vector<qint32> rung;
};

} // namespace

TEST(AlarmClockOfQt, RingsAgainAndAgainUnderTheSameId)
{
    Ringing observer;
    QtAlarmClock clock(nullptr, &observer);
    const qint32 id = clock.start(5);
    EXPECT_NE(id, 0);
    ASSERT_TRUE(VantleTest::waitUntil([&] { return observer.rung.size() >= 3; }));
    EXPECT_THAT(observer.rung, testing::Each(id));
}

TEST(AlarmClockOfQt, IsSilentOnceItIsStopped)
{
    Ringing observer;
    QtAlarmClock clock(nullptr, &observer);
    const qint32 stopped = clock.start(5);
    const qint32 running = clock.start(15);
    clock.stop(stopped);
    ASSERT_TRUE(VantleTest::waitUntil([&] { return observer.rung.size() >= 3; }));
    EXPECT_THAT(observer.rung, testing::Each(running));
}

TEST(AlarmClockOfQt, DiesWithItsTimers)
{
    Ringing observer;
    Ringing other;
    {
        QtAlarmClock clock(nullptr, &observer);
        clock.start(1);
    }
    QtAlarmClock clock(nullptr, &other);
    clock.start(5);
    ASSERT_TRUE(VantleTest::waitUntil([&] { return other.rung.size() >= 3; }));
    EXPECT_TRUE(observer.rung.empty());
}

TEST(AlarmClockOfQt, DiesWithItsParent)
{
    Ringing observer;
    auto *parent = new QObject;
    const QPointer<QtAlarmClock> clock = new QtAlarmClock(parent, &observer);
    delete parent;
    EXPECT_TRUE(clock.isNull());
}

namespace {

/// What the host does: offers every event of a window to the translation.
class Host : public QObject
{
public:
    explicit Host(const SharedPtr<QtEventRecorder> &recorder) : m_recorder(recorder) {}

    bool eventFilter(QObject *receiver, QEvent *event) override
    {
        SyntheticEvent record;
        if (event->spontaneous() && receiver->isWindowType() && qtEventToSyntheticEvent(receiver, event, &record))
            m_recorder->eatEvent(record);
        return false;
    }

private:
    SharedPtr<QtEventRecorder> m_recorder;
};

/// Names items by type and object name, wherever they are.
class NamesWithoutContainer : public NameSource
{
public:
    ObjectName objectName(QObject *item) const override
    {
        return ObjectName(QStringLiteral("MouseArea[objectName=\"%1\"]").arg(item->objectName()));
    }
};

class RecordingAScene : public EventRecording
{
protected:
    void SetUp() override
    {
        QGuiApplication::styleHints()->setMouseDoubleClickInterval(40);
        QQmlComponent component(view.engine());
        component.setData(R"(
            import QtQuick
            Item {
                width: 200; height: 200
                MouseArea {
                    objectName: "area"
                    x: 20; y: 30; width: 100; height: 80
                    onDoubleClicked: destroy()
                }
                TextInput { objectName: "input"; y: 150; width: 200; height: 30; focus: true }
            })",
                          QUrl());
        QObject *root = component.create();
        ASSERT_TRUE(root) << qPrintable(component.errorString());
        view.setContent(QUrl(), nullptr, root);
        view.setGeometry(100, 50, 200, 200);
        view.show();
        view.requestActivate();
        ASSERT_TRUE(VantleTest::waitUntil(
            [this] { return view.isActive() && view.isExposed() && view.contentItem()->size() == QSizeF(200, 200); }));
        host = std::make_unique<Host>(QtEventRecorder::instance());
        view.installEventFilter(host.get());
    }

    void send(QEvent::Type type, int x, int y, Qt::MouseButtons buttons, Qt::MouseButton button = Qt::LeftButton)
    {
        QWindowSystemInterface::handleMouseEvent<QWindowSystemInterface::SynchronousDelivery>(
            &view, QPointF(x, y), QPointF(view.mapToGlobal(QPoint(x, y))), buttons, button, type);
    }
    void press(int x, int y) { send(QEvent::MouseButtonPress, x, y, Qt::LeftButton); }
    void move(int x, int y) { send(QEvent::MouseMove, x, y, Qt::LeftButton, Qt::NoButton); }
    void release(int x, int y) { send(QEvent::MouseButtonRelease, x, y, Qt::NoButton); }

    QQuickItem *item(const char *name) const { return view.rootObject()->findChild<QQuickItem *>(QLatin1String(name)); }
    QString nameOf(const char *name) const { return wrapAndRegisterQObject(item(name))->scriptName(); }

    void setAlias(const QString &alias, const QString &name)
    {
        QString error;
        const QJsonObject aliases{{alias, name}};
        application->setNames(NamesFile::parse(QJsonDocument(aliases).toJson(), &error));
        ASSERT_EQ(error, QString());
    }
    /// Records a click as the window system reports it.
    void clickInto(QWindow *window, int x, int y)
    {
        const QPointF local(x, y);
        for (const QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
            QMouseEvent event(type, local, local, QPointF(window->mapToGlobal(QPoint(x, y))), Qt::LeftButton,
                              Qt::NoButton, Qt::NoModifier);
            SyntheticEvent record;
            ASSERT_TRUE(qtEventToSyntheticEvent(window, &event, &record));
            QtEventRecorder::instance()->eatEvent(record);
        }
        QtEventRecorder::instance()->flushEventQueue();
    }

    QQuickView view;
    std::unique_ptr<Host> host;
};

} // namespace

TEST_F(RecordingAScene, ClickBecomesAStatementWhenTheAlarmRings)
{
    const QString area = nameOf("area");
    press(30, 40);
    move(31, 41);
    release(31, 41);
    EXPECT_TRUE(methods.empty());
    ASSERT_TRUE(VantleTest::waitUntil([this] { return !methods.empty(); }));
    EXPECT_EQ(methods, Methods{mouseClickOCBByNameFn()});
    EXPECT_EQ(names.front(), area);
}

TEST_F(RecordingAScene, DoubleClickBecomesOneStatementAlsoIfItDestroysTheItem)
{
    const QString area = nameOf("area");
    const QPointer<QQuickItem> guard = item("area");
    press(30, 40);
    release(30, 40);
    press(30, 40);
    release(30, 40);
    ASSERT_TRUE(VantleTest::waitUntil([&] { return guard.isNull(); }));
    EXPECT_EQ(methods, Methods{doubleClickOCBByNameFn()});
    EXPECT_EQ(names.front(), area);
}

TEST_F(RecordingAScene, DragBecomesAStatementAtItsRelease)
{
    const QString area = nameOf("area");
    press(30, 40);
    move(60, 70);
    move(90, 100);
    release(90, 100);
    EXPECT_EQ(methods, Methods{mouseDragByNameFn()});
    EXPECT_EQ(names.front(), area);
}

TEST_F(RecordingAScene, TypedTextBecomesAStatementOfTheFocusItem)
{
    const QString input = nameOf("input");
    for (const char letter : {'a', 'b'}) {
        const int key = Qt::Key_A + (letter - 'a');
        const QString text = QString(QLatin1Char(letter));
        for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease})
            QWindowSystemInterface::handleKeyEvent<QWindowSystemInterface::SynchronousDelivery>(&view, type, key,
                                                                                                Qt::NoModifier, text);
    }
    QtEventRecorder::instance()->flushEventQueue();
    EXPECT_EQ(item("input")->property("text").toString(), QStringLiteral("ab"));
    EXPECT_EQ(methods, Methods{typeByNameFn()});
    EXPECT_EQ(names.front(), input);
}

TEST_F(RecordingAScene, ClickOnAPlainWindowIsWrittenByTheWindowsAlias)
{
    QWindow window;
    window.setTitle(QStringLiteral("Plain"));
    window.setGeometry(400, 50, 50, 50);
    window.show();
    ASSERT_TRUE(VantleTest::waitUntil([&] { return window.isExposed(); }));
    setAlias(QStringLiteral("plain"), wrapAndRegisterQObject(&window)->scriptName());
    clickInto(&window, 5, 5);
    EXPECT_EQ(methods, Methods{mouseClickOCBByNameFn()});
    EXPECT_EQ(names, std::vector<QString>{QStringLiteral("@plain")});
}

TEST_F(RecordingAScene, ClickOnAnItemIsWrittenByTheItemsAlias)
{
    setAlias(QStringLiteral("area"), nameOf("area"));
    EXPECT_EQ(nameOf("area"), QStringLiteral("@area"));
    clickInto(&view, 30, 40);
    EXPECT_EQ(methods, Methods{mouseClickOCBByNameFn()});
    EXPECT_EQ(names, std::vector<QString>{QStringLiteral("@area")});
}

TEST_F(RecordingAScene, ClickOnAnItemWithoutContainerIsWrittenByItsAlias)
{
    application->nameGenerator()->registerSource(classForMetaObject(&QQuickItem::staticMetaObject),
                                                 std::make_unique<NamesWithoutContainer>());
    setAlias(QStringLiteral("area"), QStringLiteral("MouseArea[objectName=\"area\"]"));
    EXPECT_EQ(qualifiedQuickItemName(wrapAndRegisterQObject(item("area"))),
              QStringLiteral("MouseArea[objectName=\"area\"]"));
    clickInto(&view, 30, 40);
    EXPECT_EQ(methods, Methods{mouseClickOCBByNameFn()});
    EXPECT_EQ(names, std::vector<QString>{QStringLiteral("@area")});
}

TEST_F(RecordingAScene, AFinishedClickIsRecordedAfterTheWindowHasGone)
{
    auto window = std::make_unique<QQuickWindow>();
    window->setGeometry(0, 0, 50, 50);
    window->show();
    ASSERT_TRUE(VantleTest::waitUntil([&] { return window->isExposed(); }));
    const QPoint global = window->mapToGlobal(QPoint(5, 5));
    for (const QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
        QMouseEvent event(type, QPointF(5, 5), QPointF(5, 5), QPointF(global), Qt::LeftButton, Qt::NoButton,
                          Qt::NoModifier);
        SyntheticEvent record;
        ASSERT_TRUE(qtEventToSyntheticEvent(window.get(), &event, &record));
        QtEventRecorder::instance()->eatEvent(record);
    }
    window.reset();
    ASSERT_TRUE(VantleTest::waitUntil([this] { return !methods.empty(); }));
    EXPECT_EQ(methods, Methods{mouseClickOCBByNameFn()});
}
