#pragma once

#include "agent/recording/recordstage.h"
#include "wrappers/qt/extensions/qtquickcommon/compression/syntheticevent.h"

#include <QtCore/QPoint>

#include <optional>
#include <vector>

namespace Vantle::Agent {

/// Has a drag cross its threshold where the player of scripts will.
///
/// A drag of an item is measured from the first move that is a drag distance
/// away from the press. Pointers move in jumps, and what a jump overshoots would
/// be missing: a drag in one jump would have no way at all. The player goes
/// exactly the drag distance, in the direction of the drag, before it goes the
/// way that was recorded. So of all moves of a press one is passed on, at that
/// very place and at the time when the pointer really got that far, together
/// with the release. That is also all that the patterns look at.
///
/// Some items move what is dragged only by what comes behind the first move
/// beyond a threshold of their own, and lose what that move overshot: the pixel by
/// pixel of the player loses less than the jumps of a hand. For those the drag is
/// told shorter by the difference, so that what is dragged ends where it ended.
///
/// Fingers alike, as long as there is one; the moves of several are all kept.
class DragCrossing final : public RecordStage
{
public:
    /// \p dragDistance, in pixels, is asked for whenever it is needed. \p lossOf
    /// gives the threshold, in pixels along an axis, of what is pressed, if that
    /// loses what overshoots it.
    DragCrossing(int (*dragDistance)(), std::optional<int> (*lossOf)(const QtWrapper::SyntheticEvent &press))
        : m_dragDistance(dragDistance)
        , m_lossOf(lossOf)
    {
    }

    void take(const QtWrapper::SyntheticEvent &record) override;

private:
    void takeMove(const QtWrapper::SyntheticEvent &move);
    void takeMouse(const QtWrapper::SyntheticEvent &record);
    void takeTouch(const QtWrapper::SyntheticEvent &record);
    void endDrag(const QtWrapper::SyntheticEvent &release);
    void endTouch(const QtWrapper::SyntheticEvent &end);
    void passTouchMoves();

    int (*m_dragDistance)();
    std::optional<int> (*m_lossOf)(const QtWrapper::SyntheticEvent &press);

    std::optional<QtWrapper::SyntheticEvent> m_press;
    std::optional<QtWrapper::SyntheticEvent> m_crossing; ///< the first move that is far enough
    std::optional<int> m_loss;
    std::optional<QPoint> m_start; ///< how far the first move beyond that threshold was

    std::optional<QtWrapper::SyntheticEvent> m_begin; ///< of one finger
    std::vector<QtWrapper::SyntheticEvent> m_updates; ///< kept back
};

} // namespace Vantle::Agent
