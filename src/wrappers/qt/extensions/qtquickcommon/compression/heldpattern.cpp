#include "wrappers/qt/extensions/qtquickcommon/compression/heldpattern_p.h"

#include "wrappers/qt/extensions/qtquickcommon/compression/eventpredicates_p.h"
#include "wrappers/qt/extensions/qtquickcommon/compression/mousecompressors.h"
#include "wrappers/qt/extensions/qtquickcommon/compression/textcompressors.h"
#include "wrappers/qt/extensions/qtquickcommon/compression/wheelcompressor.h"

#include <algorithm>
#include <optional>

namespace Vantle::QtWrapper {

namespace {

// Two wrappers that are the same now may no longer be once their native object
// is gone; one wrapper always is the same as itself.

bool isTypedOnOneWrapper(const std::list<SyntheticEvent> &queue)
{
    const Object *const wrapper = queue.front().object.get();
    return wrapper && std::all_of(queue.begin(), queue.end(), [wrapper](const SyntheticEvent &key) {
               return key.object.get() == wrapper;
           });
}

// Patterns of mouse and wheel compare no objects of moves, nor of keys. A flick
// is held against what was pressed, not against what flicks.
bool isPointedAtOneWrapper(const std::list<SyntheticEvent> &queue)
{
    std::optional<const Object *> wrapper;
    return std::all_of(queue.begin(), queue.end(), [&wrapper](const SyntheticEvent &event) {
        if (isMove(event) || event.type == SyntheticEvent::Key)
            return true;
        const auto &object = event.type == SyntheticEvent::Flick ? event.flickObject : event.object;
        if (!wrapper)
            wrapper = object.get();
        return object.get() == wrapper;
    });
}

} // namespace

// The patterns ahead of the one that holds the queue have declined because of
// an event that is in the queue already, so that nothing behind it concerns
// them. What remains to be known is what the pattern itself passes over.

void HeldPattern::remember(const Compressor &pattern, const std::list<SyntheticEvent> &queue)
{
    forget();
    if (dynamic_cast<const MouseButtonCompressor *>(&pattern) || dynamic_cast<const WheelCompressor *>(&pattern)) {
        if (isPointedAtOneWrapper(queue))
            m_through = Moves;
    } else if (dynamic_cast<const TextInputCompressor *>(&pattern) && isTypedOnOneWrapper(queue)) {
        m_typedOn = queue.front().object.get();
        m_through = Typing;
    }
}

bool HeldPattern::outlasts(const SyntheticEvent &event) const
{
    switch (m_through) {
    case Nothing: return false;
    case Moves: return isMove(event);
    case Typing:
        if (event.type != SyntheticEvent::Key || event.object.get() != m_typedOn)
            return false;
        // A release may end the typing, if its text is special or an opening bracket.
        return event.keyEventType != SyntheticEvent::KeyRelease || (event.text.size() <= 1 && event.text != "<");
    }
    return false;
}

} // namespace Vantle::QtWrapper
