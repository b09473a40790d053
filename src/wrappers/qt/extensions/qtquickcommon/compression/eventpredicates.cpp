#include "wrappers/qt/extensions/qtquickcommon/compression/eventpredicates_p.h"

#include "hook/class.h"

#include <algorithm>

namespace Vantle::QtWrapper {

bool isSameObject(const SharedPtr<Object> &a, const SharedPtr<Object> &b)
{
    return a && b && a->sameAs(b);
}

bool isFlickEvent(const SyntheticEvent &event, const SyntheticEvent &press, SyntheticEvent::FlickState state)
{
    return isFlick(event, state) && isSameObject(event.flickObject, press.object);
}

bool isOnClass(const SyntheticEvent &event, const Class *type)
{
    return !type || (event.objectClass && event.objectClass->isSubClassOf(type));
}

EventIterator skipMoves(EventIterator event, EventIterator end)
{
    return std::find_if_not(event, end, isMove);
}

EventIterator skipModifierPresses(EventIterator event, EventIterator end)
{
    return std::find_if_not(event, end, isModifierPress);
}

EventIterator skipLeadingEvents(EventIterator event, EventIterator end)
{
    return std::find_if_not(event, end, [](const SyntheticEvent &e) { return isModifierPress(e) || isMove(e); });
}

Modifier::Value joinModifiers(Modifier::Value initial, EventIterator first, EventIterator last)
{
    for (; first != last; ++first) {
        if (first->type == SyntheticEvent::Key)
            initial |= first->modifiers;
    }
    return initial;
}

} // namespace Vantle::QtWrapper
