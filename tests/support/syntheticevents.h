#pragma once

#include "support/compressionobjects.h"
#include "wrappers/qt/extensions/qtquickcommon/compression/syntheticevent.h"

#include <QtCore/QPoint>
#include <QtCore/QSize>

namespace VantleTest {

using Vantle::QtWrapper::SyntheticEvent;

/// Records as the translation of toolkit events makes them, on a ready object.
/// Points are on the screen; positions in the object follow from its origin.
SyntheticEvent makeEvent(SyntheticEvent::Type type, const TestObjectPtr &object, quint64 time);

SyntheticEvent mousePress(const TestObjectPtr &object, QPoint point, quint64 time,
                          Vantle::MouseButton::Value button = Vantle::MouseButton::LeftButton);
SyntheticEvent mouseMove(const TestObjectPtr &object, QPoint point, quint64 time);
SyntheticEvent mouseRelease(const TestObjectPtr &object, QPoint point, quint64 time,
                            Vantle::MouseButton::Value button = Vantle::MouseButton::LeftButton);
SyntheticEvent wheel(const TestObjectPtr &object, QPoint point, QPoint delta, quint64 time);

SyntheticEvent keyPress(const TestObjectPtr &object, const QByteArray &text, quint64 time,
                        Vantle::Modifier::Value modifiers = Vantle::Modifier::None);
SyntheticEvent keyRelease(const TestObjectPtr &object, const QByteArray &text, quint64 time,
                          Vantle::Modifier::Value modifiers = Vantle::Modifier::None);
SyntheticEvent inputMethod(const TestObjectPtr &object, const QByteArray &text, quint64 time);

SyntheticEvent windowClose(const TestObjectPtr &window, quint64 time);
SyntheticEvent windowMove(const TestObjectPtr &window, QPoint from, QPoint to, quint64 time);
SyntheticEvent windowResize(const TestObjectPtr &window, QSize size, quint64 time);
SyntheticEvent windowState(const TestObjectPtr &window, qint32 state, quint64 time);

SyntheticEvent flickStarted(const TestObjectPtr &flickable, const TestObjectPtr &pressed, QPoint content, quint64 time);
SyntheticEvent flickEnded(const TestObjectPtr &flickable, const TestObjectPtr &pressed, QPoint content, quint64 time);

/// One finger, without extent, whose place in the window is that on the screen.
SyntheticEvent::TouchPoint finger(qint32 id, double x, double y);
/// A touch event on \p object in a window of 640 x 480, whose first point is the primary one.
SyntheticEvent touch(SyntheticEvent::TouchEventType type, const TestObjectPtr &object,
                     std::vector<SyntheticEvent::TouchPoint> points, quint64 time);
SyntheticEvent touchBegin(const TestObjectPtr &object, std::vector<SyntheticEvent::TouchPoint> points, quint64 time);
SyntheticEvent touchUpdate(const TestObjectPtr &object, std::vector<SyntheticEvent::TouchPoint> points, quint64 time);
SyntheticEvent touchEnd(const TestObjectPtr &object, std::vector<SyntheticEvent::TouchPoint> points, quint64 time);

/// What the translation writes for a finger that is not in the event.
constexpr quint64 noPrimaryFinger = 0x3FFFFFFFFFFFFFF;

/// The same event on an object that a user could not act on.
SyntheticEvent notReady(SyntheticEvent event);

} // namespace VantleTest
