#pragma once

#include "wrappers/qt/extensions/qtquickcommon/compression/syntheticevent.h"

#include <list>

class Compressor;

namespace Vantle::QtWrapper {

/// Knows for the most frequent events that a pattern which holds the queue
/// goes on holding it, without a walk over the queue.
///
/// A pointer reports up to a thousand moves a second, and each would cost a
/// walk over all moves before it. The answer is never another than a walk
/// would give: where there is any doubt, none is given.
class HeldPattern
{
public:
    /// To be called whenever the queue loses events or patterns may answer differently.
    void forget() noexcept { m_through = Nothing; }

    /// \p pattern, and none ahead of it, has answered for \p queue that it waits for further events.
    void remember(const Compressor &pattern, const std::list<SyntheticEvent> &queue);

    /// Whether that pattern still waits with \p event behind the queue.
    bool outlasts(const SyntheticEvent &event) const;

private:
    enum Through {
        Nothing,
        Moves,
        Typing,
    };

    Through m_through = Nothing;
    const Object *m_typedOn = nullptr; ///< what all queued keys are on, while it holds through typing
};

} // namespace Vantle::QtWrapper
