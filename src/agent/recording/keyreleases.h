#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QHash>

class QEvent;
class QKeyEvent;

namespace Vantle::QtWrapper {
class SyntheticEvent;
}

namespace Vantle::Agent {

/// Has the release of a key say what its press said.
///
/// The recorder writes a special key when it is released, and knows it then by
/// its text. Whoever lets go of Ctrl before the letter releases a plain letter,
/// though: the key would go unnoticed until something else ends the typing, and
/// all that was typed in between would be lost.
class KeyReleases
{
public:
    /// Corrects \p record, made from \p event, if that is a key's. False for the
    /// release of a key that writes nothing, a modifier's. It is best kept from
    /// the recorder, since it may stand between a key and that key's release;
    /// that the modifier is up, the next event of the pointer tells.
    bool correct(const QEvent &event, QtWrapper::SyntheticEvent *record);

    /// Whether the press of the key was seen whose release \p event is.
    bool knows(const QKeyEvent &event) const;

private:
    /// What the keys wrote that are down, by the key of the keyboard: its
    /// meaning changes with the modifiers.
    QHash<quint32, QByteArray> m_texts;
};

} // namespace Vantle::Agent
