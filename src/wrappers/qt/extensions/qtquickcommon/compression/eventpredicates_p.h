#pragma once

#include "wrappers/qt/extensions/qtquickcommon/compression/compressor.h"

namespace Vantle::QtWrapper {

using EventIterator = EventQueue::const_iterator;

inline bool isMouse(const SyntheticEvent &event, SyntheticEvent::MouseEventType type)
{
    return event.type == SyntheticEvent::Mouse && event.mouseEventType == type;
}

inline bool isMove(const SyntheticEvent &event)
{
    return isMouse(event, SyntheticEvent::Move);
}

inline bool isReleaseOf(const SyntheticEvent &press, const SyntheticEvent &event)
{
    return isMouse(event, SyntheticEvent::Release) && event.button == press.button;
}

inline bool isKeyPress(const SyntheticEvent &event)
{
    return event.type == SyntheticEvent::Key && event.keyEventType == SyntheticEvent::KeyPress;
}

inline bool isModifierPress(const SyntheticEvent &event)
{
    return isKeyPress(event) && event.modifiers != Modifier::None;
}

inline bool isFlick(const SyntheticEvent &event, SyntheticEvent::FlickState state)
{
    return event.type == SyntheticEvent::Flick && event.flickState == state;
}

inline bool isTouch(const SyntheticEvent &event, SyntheticEvent::TouchEventType type)
{
    return event.type == SyntheticEvent::Touch && event.touch.touchEventType == type;
}

/// Whether both are there and stand for the same object.
bool isSameObject(const SharedPtr<Object> &a, const SharedPtr<Object> &b);

/// Whether \p event is a flick event in \p state for the item that \p press pressed.
bool isFlickEvent(const SyntheticEvent &event, const SyntheticEvent &press, SyntheticEvent::FlickState state);

/// Whether the event's class is \p type or derives from it. A null \p type stands for any class.
bool isOnClass(const SyntheticEvent &event, const Class *type);

/// Each of these gives the first event from \p event on that is not to be skipped, or \p end.
EventIterator skipMoves(EventIterator event, EventIterator end);
EventIterator skipModifierPresses(EventIterator event, EventIterator end);
/// Modifier presses and moves in any order: what may lie ahead of a press.
EventIterator skipLeadingEvents(EventIterator event, EventIterator end);

/// \p initial and what the key events from \p first up to \p last add to it.
Modifier::Value joinModifiers(Modifier::Value initial, EventIterator first, EventIterator last);

/// \p to - \p from, modulo 2^32: no coordinate that a toolkit reports can make it overflow.
constexpr qint32 offset(qint32 from, qint32 to) noexcept
{
    return static_cast<qint32>(static_cast<qint64>(to) - from);
}

} // namespace Vantle::QtWrapper
