#include "wrappers/qt/extensions/qtquickcommon/compression/heldpattern_p.h"

#include "wrappers/qt/extensions/qtquickcommon/compression/eventpredicates_p.h"
#include "wrappers/qt/extensions/qtquickcommon/compression/mousecompressors.h"
#include "wrappers/qt/extensions/qtquickcommon/compression/textcompressors.h"
#include "wrappers/qt/extensions/qtquickcommon/compression/wheelcompressor.h"

#include <algorithm>

namespace Vantle::QtWrapper {

// The patterns ahead of the one that holds the queue have declined because of
// an event that is in the queue already, so that nothing behind it concerns
// them. What remains to be known is what the pattern itself passes over.

void HeldPattern::remember(const Compressor &pattern, const std::list<SyntheticEvent> &queue)
{
    forget();
    if (dynamic_cast<const MouseButtonCompressor *>(&pattern) || dynamic_cast<const WheelCompressor *>(&pattern)) {
        m_through = Moves;
    } else if (dynamic_cast<const TextInputCompressor *>(&pattern)) {
        // Two wrappers that are the same now may no longer be once their
        // native object is gone; one wrapper always is the same as itself.
        m_typedOn = queue.front().object.get();
        const bool isOneWrapper = std::all_of(queue.begin(), queue.end(), [this](const SyntheticEvent &key) {
            return key.object.get() == m_typedOn;
        });
        if (m_typedOn && isOneWrapper)
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
