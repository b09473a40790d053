#pragma once

#include "agent/recording/recordstage.h"
#include "wrappers/qt/extensions/qtquickcommon/compression/syntheticevent.h"

#include <functional>
#include <optional>

namespace Vantle::Agent {

/// Records what no pattern of the recorder knows: presses that are held for
/// longer than a long click, what the window system drags and drops, and
/// modifier keys that are pressed alone.
class HostPatterns final : public RecordStage
{
public:
    /// \p finish has the recorder give all that it holds, and forget the press or
    /// key with which a pattern of this stage begins. \p dragDistance is in pixels.
    HostPatterns(std::function<void(const QtWrapper::SyntheticEvent &beginning)> finish, int (*dragDistance)())
        : m_finish(std::move(finish))
        , m_dragDistance(dragDistance)
    {
    }

    void take(const QtWrapper::SyntheticEvent &record) override;

    /// The key event \p record is the release of a modifier, which the stages
    /// ahead keep from the line.
    void takeModifierRelease(const QtWrapper::SyntheticEvent &record);

    /// The window system drops something at \p target: the end of the press, of
    /// which no release will come. Without a press nothing comes of it.
    void takeDrop(const QtWrapper::SyntheticEvent &target);

    /// Whether a button is down.
    bool isPressed() const { return m_press.has_value(); }

    void reset();

private:
    bool isHeldLong(const QtWrapper::SyntheticEvent &release) const;
    void recordHeld(const QtWrapper::SyntheticEvent &release);

    std::function<void(const QtWrapper::SyntheticEvent &)> m_finish;
    int (*m_dragDistance)();
    std::optional<QtWrapper::SyntheticEvent> m_press;
    std::optional<QtWrapper::SyntheticEvent> m_modifier; ///< pressed, with nothing behind it
};

} // namespace Vantle::Agent
