#include "support/syntheticevents.h"

#include <cmath>

using namespace Vantle;

namespace VantleTest {

namespace {

void place(SyntheticEvent &event, const TestObjectPtr &object, QPoint point)
{
    // Modulo 2^32: tests go to the ends of the range.
    event.x = static_cast<qint32>(qint64(point.x()) - object->origin().x());
    event.y = static_cast<qint32>(qint64(point.y()) - object->origin().y());
}

/// 0 for what no screen has.
int wholePixels(double position)
{
    return std::abs(position) < 1e9 ? static_cast<int>(position) : 0;
}

SyntheticEvent mouse(SyntheticEvent::MouseEventType type, const TestObjectPtr &object, QPoint point, quint64 time,
                     MouseButton::Value button)
{
    SyntheticEvent event = makeEvent(SyntheticEvent::Mouse, object, time);
    event.mouseEventType = type;
    event.button = button;
    event.globalX = point.x();
    event.globalY = point.y();
    place(event, object, point);
    return event;
}

SyntheticEvent key(SyntheticEvent::KeyEventType type, const TestObjectPtr &object, const QByteArray &text, quint64 time,
                   Modifier::Value modifiers)
{
    SyntheticEvent event = makeEvent(SyntheticEvent::Key, object, time);
    event.keyEventType = type;
    event.key = text.isEmpty() ? 0 : static_cast<uchar>(text.front());
    event.modifiers = modifiers;
    event.text = text;
    return event;
}

SyntheticEvent flick(SyntheticEvent::FlickState state, const TestObjectPtr &flickable, const TestObjectPtr &pressed,
                     QPoint content, quint64 time)
{
    SyntheticEvent event = makeEvent(SyntheticEvent::Flick, flickable, time);
    event.flickObject = pressed;
    event.flickState = state;
    event.contentX = content.x();
    event.contentY = content.y();
    return event;
}

} // namespace

SyntheticEvent makeEvent(SyntheticEvent::Type type, const TestObjectPtr &object, quint64 time)
{
    SyntheticEvent event;
    event.type = type;
    event.object = object;
    event.ready = true;
    event.objectName = object->name();
    event.objectClass = object->objectClass();
    event.timestamp = time;
    return event;
}

SyntheticEvent mousePress(const TestObjectPtr &object, QPoint point, quint64 time, MouseButton::Value button)
{
    return mouse(SyntheticEvent::Press, object, point, time, button);
}

SyntheticEvent mouseMove(const TestObjectPtr &object, QPoint point, quint64 time)
{
    return mouse(SyntheticEvent::Move, object, point, time, MouseButton::None);
}

SyntheticEvent mouseRelease(const TestObjectPtr &object, QPoint point, quint64 time, MouseButton::Value button)
{
    return mouse(SyntheticEvent::Release, object, point, time, button);
}

SyntheticEvent wheel(const TestObjectPtr &object, QPoint point, QPoint delta, quint64 time)
{
    SyntheticEvent event = makeEvent(SyntheticEvent::Wheel, object, time);
    event.wheelDeltaX = delta.x();
    event.wheelDeltaY = delta.y();
    place(event, object, point);
    return event;
}

SyntheticEvent keyPress(const TestObjectPtr &object, const QByteArray &text, quint64 time, Modifier::Value modifiers)
{
    return key(SyntheticEvent::KeyPress, object, text, time, modifiers);
}

SyntheticEvent keyRelease(const TestObjectPtr &object, const QByteArray &text, quint64 time, Modifier::Value modifiers)
{
    return key(SyntheticEvent::KeyRelease, object, text, time, modifiers);
}

SyntheticEvent inputMethod(const TestObjectPtr &object, const QByteArray &text, quint64 time)
{
    SyntheticEvent event = makeEvent(SyntheticEvent::InputMethod, object, time);
    event.inputMethodText = text;
    return event;
}

SyntheticEvent windowClose(const TestObjectPtr &window, quint64 time)
{
    return makeEvent(SyntheticEvent::WindowClose, window, time);
}

SyntheticEvent windowMove(const TestObjectPtr &window, QPoint from, QPoint to, quint64 time)
{
    SyntheticEvent event = makeEvent(SyntheticEvent::WindowMove, window, time);
    event.oldWindowX = from.x();
    event.oldWindowY = from.y();
    event.windowX = to.x();
    event.windowY = to.y();
    return event;
}

SyntheticEvent windowResize(const TestObjectPtr &window, QSize size, quint64 time)
{
    SyntheticEvent event = makeEvent(SyntheticEvent::WindowResize, window, time);
    event.windowWidth = size.width();
    event.windowHeight = size.height();
    return event;
}

SyntheticEvent windowState(const TestObjectPtr &window, qint32 state, quint64 time)
{
    SyntheticEvent event = makeEvent(SyntheticEvent::WindowStateChange, window, time);
    event.windowState = state;
    return event;
}

SyntheticEvent flickStarted(const TestObjectPtr &flickable, const TestObjectPtr &pressed, QPoint content, quint64 time)
{
    return flick(SyntheticEvent::FlickStarted, flickable, pressed, content, time);
}

SyntheticEvent flickEnded(const TestObjectPtr &flickable, const TestObjectPtr &pressed, QPoint content, quint64 time)
{
    return flick(SyntheticEvent::FlickEnded, flickable, pressed, content, time);
}

SyntheticEvent::TouchPoint finger(qint32 id, double x, double y)
{
    SyntheticEvent::TouchPoint point{};
    point.state = SyntheticEvent::TouchPoint::Updated;
    point.id = id;
    point.globalX = x;
    point.globalY = y;
    point.x = x;
    point.y = y;
    point.pressure = 1;
    return point;
}

SyntheticEvent touch(SyntheticEvent::TouchEventType type, const TestObjectPtr &object,
                     std::vector<SyntheticEvent::TouchPoint> points, quint64 time)
{
    static const TestObjectPtr window = makeObject("window", classNamed("TestWindow"));
    SyntheticEvent event = makeEvent(SyntheticEvent::Touch, object, time);
    event.touch.touchEventType = type;
    event.touch.primaryIndex = points.empty() ? noPrimaryFinger : 0;
    event.touch.object = window;
    const bool isBegin = type == SyntheticEvent::TouchBegin;
    event.touch.objectName = isBegin ? window->name() : QByteArray();
    event.touch.areaWidth = isBegin ? 640 : 0;
    event.touch.areaHeight = isBegin ? 480 : 0;
    if (!points.empty())
        place(event, object, QPoint(wholePixels(points.front().globalX), wholePixels(points.front().globalY)));
    event.touch.points = std::move(points);
    return event;
}

SyntheticEvent touchBegin(const TestObjectPtr &object, std::vector<SyntheticEvent::TouchPoint> points, quint64 time)
{
    return touch(SyntheticEvent::TouchBegin, object, std::move(points), time);
}

SyntheticEvent touchUpdate(const TestObjectPtr &object, std::vector<SyntheticEvent::TouchPoint> points, quint64 time)
{
    return touch(SyntheticEvent::TouchUpdate, object, std::move(points), time);
}

SyntheticEvent touchEnd(const TestObjectPtr &object, std::vector<SyntheticEvent::TouchPoint> points, quint64 time)
{
    return touch(SyntheticEvent::TouchEnd, object, std::move(points), time);
}

SyntheticEvent notReady(SyntheticEvent event)
{
    event.ready = false;
    return event;
}

} // namespace VantleTest
