#pragma once

#include <QtCore/qnamespace.h>

class QKeyEvent;

namespace Vantle::Agent {

/// Knows the keys of shortcuts with several keys.
///
/// Once the first key has come, Qt shows the others to nobody but the shortcut:
/// of these only the release is seen.
///
/// Lives on the thread of the user interface.
class ShortcutSequences
{
public:
    /// To be called now and then, at least ahead of every key event: looks
    /// whether a shortcut waits for its next key.
    void look();

    /// Whether \p release, of a key whose press was not seen, is that of a
    /// further key of a shortcut. The next one is not, unless a shortcut waits again.
    bool takeRelease(const QKeyEvent &release);

    /// The modifiers that the key was pressed with whose release takeRelease() has
    /// just taken: some may have been let go ahead of it.
    Qt::KeyboardModifiers modifiersOf(const QKeyEvent &release) const;

private:
    bool m_isExpecting = false;
    Qt::KeyboardModifiers m_released; ///< of which only the release was seen
    Qt::KeyboardModifiers m_modifiers;
};

} // namespace Vantle::Agent
