#include "translationfixture.h"

#include <QtGui/QPointingDevice>
#include <QtGui/QTouchEvent>
#include <QtGui/private/qeventpoint_p.h>
#include <QtGui/qpa/qwindowsysteminterface.h>

using namespace Vantle;
using namespace Vantle::QtWrapper;
using VantleTest::Translation;

namespace {

constexpr quint64 NoPrimaryIndex = 0x3ffffffffffffff;

const QPointingDevice *touchScreen()
{
    static const QPointingDevice *const device = [] {
        auto *screen = new QPointingDevice(QStringLiteral("screen"), 77, QInputDevice::DeviceType::TouchScreen,
                                           QPointingDevice::PointerType::Finger, QInputDevice::Capability::Position, 10,
                                           0);
        QWindowSystemInterface::registerInputDevice(screen);
        return screen;
    }();
    return device;
}

class TouchTranslation : public Translation
{
protected:
    void SetUp() override
    {
        Translation::SetUp();
        // So that the sequence of the test before doesn't count.
        ASSERT_TRUE(touch(QEvent::TouchCancel, {}));
    }

    /// A finger at (\p x, \p y) of the window.
    QEventPoint finger(int id, qreal x, qreal y, QEventPoint::State state = QEventPoint::Pressed,
                       const QSizeF &ellipse = QSizeF(0, 0)) const
    {
        QEventPoint point(id, state, QPointF(x, y), globalOf(x, y));
        QMutableEventPoint::setPosition(point, QPointF(x, y));
        QMutableEventPoint::setEllipseDiameters(point, ellipse);
        return point;
    }

    bool touch(QEvent::Type type, const QList<QEventPoint> &points)
    {
        QTouchEvent event(type, touchScreen(), Qt::NoModifier, points);
        return translate(window.get(), event);
    }
};

} // namespace

TEST_F(TouchTranslation, BeginIsRecordedAgainstTheItemUnderTheFirstFinger)
{
    QTouchEvent event(QEvent::TouchBegin, touchScreen(), Qt::NoModifier, {finger(5, 25, 40), finger(6, 150, 150)});
    SyntheticEvent actual = VantleTest::markedRecord();
    SyntheticEvent expected = actual;
    ASSERT_TRUE(qtEventToSyntheticEvent(window.get(), &event, &actual));

    expected.type = SyntheticEvent::Touch;
    expected.touch.touchEventType = SyntheticEvent::TouchBegin;
    expected.touch.points.resize(2);
    expected.touch.primaryIndex = 0;
    expected.touch.object = wrapAndRegisterQObject(window.get());
    expected.touch.objectName = expected.touch.object->scriptName().toUtf8();
    expected.touch.areaWidth = 200;
    expected.touch.areaHeight = 200;
    expected.object = wrapAndRegisterQObject(item);
    expected.objectName = expected.object->scriptName().toUtf8();
    expected.objectClass = expected.object->objectClass();
    expected.ready = true;
    expected.x = 5;
    expected.y = 10;
    VantleTest::expectSameRecord(actual, expected);
    EXPECT_FALSE(actual.touch.objectName.isEmpty());
}

TEST_F(TouchTranslation, FingersAreCopiedInOrder)
{
    QEventPoint moved = finger(9, 25, 40, QEventPoint::Updated, QSizeF(8, 12));
    QMutableEventPoint::setPressure(moved, 0.25);
    QMutableEventPoint::setPosition(moved, QPointF(25.5, 40.25));
    ASSERT_TRUE(touch(QEvent::TouchUpdate,
                      {moved, finger(2, 1, 2, QEventPoint::Stationary), finger(3, 3, 4, QEventPoint::Released),
                       finger(4, 5, 6, QEventPoint::Pressed), finger(5, 7, 8, QEventPoint::Unknown)}));
    const auto &points = result.touch.points;
    ASSERT_EQ(points.size(), 5u);
    EXPECT_EQ(points[0].id, 9);
    EXPECT_EQ(points[0].globalX, globalOf(25, 40).x());
    EXPECT_EQ(points[0].globalY, globalOf(25, 40).y());
    EXPECT_EQ(points[0].width, 8);
    EXPECT_EQ(points[0].height, 12);
    EXPECT_EQ(points[0].x, 25.5);
    EXPECT_EQ(points[0].y, 40.25);
    EXPECT_EQ(points[0].pressure, 0.25);
    EXPECT_EQ(points[0].state, SyntheticEvent::TouchPoint::Updated);
    EXPECT_EQ(points[1].state, SyntheticEvent::TouchPoint::Updated);
    EXPECT_EQ(points[2].state, SyntheticEvent::TouchPoint::Released);
    EXPECT_EQ(points[3].state, SyntheticEvent::TouchPoint::Pressed);
    EXPECT_EQ(points[4].state, SyntheticEvent::TouchPoint::Updated);
}

TEST_F(TouchTranslation, ThePrimaryFingerIsFollowedThroughTheSequence)
{
    ASSERT_TRUE(touch(QEvent::TouchBegin, {finger(5, 150, 150)}));
    EXPECT_EQ(recordedObject(), window.get());

    ASSERT_TRUE(touch(QEvent::TouchUpdate, {finger(6, 150, 150), finger(5, 25, 40, QEventPoint::Updated)}));
    EXPECT_EQ(result.touch.touchEventType, SyntheticEvent::TouchUpdate);
    EXPECT_EQ(result.touch.primaryIndex, 1u);
    EXPECT_EQ(recordedObject(), item);
    EXPECT_EQ(result.x, 5);
    EXPECT_EQ(result.y, 10);

    ASSERT_TRUE(touch(QEvent::TouchEnd, {finger(5, 26, 41, QEventPoint::Released)}));
    EXPECT_EQ(result.touch.touchEventType, SyntheticEvent::TouchEnd);
    EXPECT_EQ(result.touch.primaryIndex, 0u);
    EXPECT_EQ(recordedObject(), item);
}

TEST_F(TouchTranslation, OnlyTheBeginSaysWhereTheGestureIsMade)
{
    ASSERT_TRUE(touch(QEvent::TouchBegin, {finger(5, 25, 40)}));
    for (const QEvent::Type type : {QEvent::TouchUpdate, QEvent::TouchEnd}) {
        ASSERT_TRUE(touch(type, {finger(5, 25, 40)}));
        EXPECT_EQ(nativeQObject(result.touch.object), window.get());
        EXPECT_TRUE(result.touch.objectName.isEmpty());
        EXPECT_EQ(result.touch.areaWidth, 0);
        EXPECT_EQ(result.touch.areaHeight, 0);
    }
}

TEST_F(TouchTranslation, UpdateWithoutThePrimaryFingerIsRecordedAgainstTheWindow)
{
    ASSERT_TRUE(touch(QEvent::TouchBegin, {finger(5, 25, 40)}));
    ASSERT_TRUE(touch(QEvent::TouchUpdate, {finger(6, 25, 40)}));
    EXPECT_EQ(result.touch.primaryIndex, NoPrimaryIndex);
    EXPECT_EQ(recordedObject(), window.get());
    EXPECT_EQ(result.x, 0);
    EXPECT_EQ(result.y, 0);
}

TEST_F(TouchTranslation, UpdateOutsideASequenceHasNoPrimaryFinger)
{
    ASSERT_TRUE(touch(QEvent::TouchUpdate, {finger(0, 25, 40)}));
    EXPECT_EQ(result.touch.primaryIndex, NoPrimaryIndex);

    ASSERT_TRUE(touch(QEvent::TouchBegin, {finger(5, 25, 40)}));
    ASSERT_TRUE(touch(QEvent::TouchEnd, {finger(5, 25, 40)}));
    ASSERT_TRUE(touch(QEvent::TouchUpdate, {finger(5, 25, 40)}));
    EXPECT_EQ(result.touch.primaryIndex, NoPrimaryIndex);
    EXPECT_EQ(recordedObject(), window.get());
}

TEST_F(TouchTranslation, CancelEndsTheSequence)
{
    ASSERT_TRUE(touch(QEvent::TouchBegin, {finger(5, 25, 40)}));
    ASSERT_TRUE(touch(QEvent::TouchCancel, {}));
    EXPECT_EQ(result.touch.touchEventType, SyntheticEvent::TouchEnd);
    EXPECT_EQ(result.touch.primaryIndex, NoPrimaryIndex);
    EXPECT_TRUE(result.touch.points.empty());
    EXPECT_EQ(recordedObject(), window.get());

    ASSERT_TRUE(touch(QEvent::TouchUpdate, {finger(5, 25, 40)}));
    EXPECT_EQ(result.touch.primaryIndex, NoPrimaryIndex);
}

TEST_F(TouchTranslation, ANewBeginReplacesThePrimaryFinger)
{
    ASSERT_TRUE(touch(QEvent::TouchBegin, {finger(5, 25, 40)}));
    ASSERT_TRUE(touch(QEvent::TouchBegin, {finger(6, 25, 40)}));
    ASSERT_TRUE(touch(QEvent::TouchUpdate, {finger(5, 25, 40), finger(6, 25, 40)}));
    EXPECT_EQ(result.touch.primaryIndex, 1u);
}

TEST_F(TouchTranslation, TheFirstOfTwoFingersWithThePrimaryIdCounts)
{
    ASSERT_TRUE(touch(QEvent::TouchBegin, {finger(5, 150, 150)}));
    ASSERT_TRUE(touch(QEvent::TouchUpdate, {finger(6, 150, 150), finger(5, 25, 40), finger(5, 150, 150)}));
    EXPECT_EQ(result.touch.primaryIndex, 1u);
    EXPECT_EQ(recordedObject(), item);

    ASSERT_TRUE(touch(QEvent::TouchEnd, {finger(5, 150, 150), finger(5, 25, 40)}));
    EXPECT_EQ(result.touch.primaryIndex, 0u);
    EXPECT_EQ(recordedObject(), window.get());
}

TEST_F(TouchTranslation, EndWithoutThePrimaryFingerEndsTheSequenceToo)
{
    ASSERT_TRUE(touch(QEvent::TouchBegin, {finger(5, 25, 40)}));
    ASSERT_TRUE(touch(QEvent::TouchEnd, {finger(6, 25, 40)}));
    EXPECT_EQ(result.touch.primaryIndex, NoPrimaryIndex);
    EXPECT_EQ(recordedObject(), window.get());

    ASSERT_TRUE(touch(QEvent::TouchUpdate, {finger(5, 25, 40)}));
    EXPECT_EQ(result.touch.primaryIndex, NoPrimaryIndex);
    EXPECT_EQ(recordedObject(), window.get());
}

TEST_F(TouchTranslation, BeginWithoutFingersHasNoPrimaryFinger)
{
    ASSERT_TRUE(touch(QEvent::TouchBegin, {}));
    EXPECT_EQ(result.touch.primaryIndex, 0u);
    EXPECT_TRUE(result.touch.points.empty());
    EXPECT_EQ(recordedObject(), window.get());
    ASSERT_TRUE(touch(QEvent::TouchUpdate, {finger(0, 25, 40)}));
    EXPECT_EQ(result.touch.primaryIndex, NoPrimaryIndex);
}

TEST_F(TouchTranslation, PositionIsTheGlobalOnePlusHalfTheEllipse)
{
    ASSERT_TRUE(touch(QEvent::TouchBegin, {finger(5, 15, 25, QEventPoint::Pressed, QSizeF(20, 30))}));
    EXPECT_EQ(recordedObject(), item); // (25, 40) although the finger is at (15, 25)
    EXPECT_EQ(result.x, 5);
    EXPECT_EQ(result.y, 10);
}

TEST_F(TouchTranslation, PositionIsCutToWholePixels)
{
    ASSERT_TRUE(touch(QEvent::TouchBegin, {finger(5, 25.4, 40.5, QEventPoint::Pressed, QSizeF(1, 0.9))}));
    EXPECT_EQ(result.x, 5); // 25.9 in the window
    EXPECT_EQ(result.y, 10);

    const QPoint origin = window->mapToGlobal(QPoint(0, 0));
    ASSERT_TRUE(touch(QEvent::TouchBegin, {finger(5, -0.9 - origin.x(), -1.9 - origin.y())}));
    EXPECT_EQ(result.x, 0 - origin.x()); // toward zero on the screen
    EXPECT_EQ(result.y, -1 - origin.y());
}

namespace {

/// Translates all touch events that a window gets.
class TouchTranslator : public QObject
{
public:
    bool eventFilter(QObject *receiver, QEvent *event) override
    {
        switch (event->type()) {
        case QEvent::TouchBegin:
        case QEvent::TouchUpdate:
        case QEvent::TouchEnd:
        case QEvent::TouchCancel: {
            SyntheticEvent record;
            EXPECT_TRUE(qtEventToSyntheticEvent(receiver, event, &record));
            records.push_back(record);
            break;
        }
        default: break;
        }
        return false;
    }

    std::vector<SyntheticEvent> records;
};

QList<QWindowSystemInterface::TouchPoint> nativeFinger(QPointF global, QEventPoint::State state)
{
    QWindowSystemInterface::TouchPoint point;
    point.id = 3;
    point.area = QRectF(0, 0, 4, 6);
    point.area.moveCenter(global);
    point.pressure = 0.5;
    point.state = state;
    return {point};
}

} // namespace

TEST_F(TouchTranslation, TouchesThatTheWindowSystemDeliversAreTranslated)
{
    item->setAcceptTouchEvents(true);
    TouchTranslator translator;
    window->installEventFilter(&translator);
    QWindowSystemInterface::handleTouchEvent<QWindowSystemInterface::SynchronousDelivery>(
        window.get(), touchScreen(), nativeFinger(globalOf(25, 40), QEventPoint::Pressed));
    QWindowSystemInterface::handleTouchEvent<QWindowSystemInterface::SynchronousDelivery>(
        window.get(), touchScreen(), nativeFinger(globalOf(45, 60), QEventPoint::Updated));
    QWindowSystemInterface::handleTouchEvent<QWindowSystemInterface::SynchronousDelivery>(
        window.get(), touchScreen(), nativeFinger(globalOf(45, 60), QEventPoint::Released));

    ASSERT_GE(translator.records.size(), 2u);
    const SyntheticEvent &begin = translator.records.front();
    EXPECT_EQ(begin.touch.touchEventType, SyntheticEvent::TouchBegin);
    EXPECT_EQ(nativeQObject(begin.object), item);
    EXPECT_EQ(begin.x, 25 + 2 - 20);
    EXPECT_EQ(begin.y, 40 + 3 - 30);
    for (const SyntheticEvent &record : translator.records) {
        ASSERT_EQ(record.touch.points.size(), 1u);
        EXPECT_EQ(record.touch.primaryIndex, 0u);
        EXPECT_EQ(record.touch.points.front().width, 4);
        EXPECT_EQ(record.touch.points.front().height, 6);
    }
}
