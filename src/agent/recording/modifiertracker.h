#pragma once

#include "hook/inputvalues.h"

#include <QtCore/QList>
#include <QtCore/qnamespace.h>

class QInputEvent;

namespace Vantle::QtWrapper {
class SyntheticEvent;
}

namespace Vantle::Agent {

/// Knows which keyboard modifiers the recorder believes to be held.
///
/// The recorder knows modifiers from key events alone, and takes one back only
/// when a release names it. X11 reports the release of a modifier without it,
/// so after one Ctrl+click every later click would be a Ctrl+click. The pointer
/// events tell what is really held.
class ModifierTracker
{
public:
    /// Takes note of a record that goes to the recorder.
    void noteRecord(const QtWrapper::SyntheticEvent &record);

    /// Whether the recorder believes in a modifier that \p event, which begins
    /// something new with the pointer, shows to be up.
    bool isContradictedBy(const QInputEvent &event) const;

    /// The keys of the modifiers that \p event, which begins something new with
    /// the pointer, shows to be held, and that the recorder knows nothing of: they
    /// went down in another window, or a release that named them took them back.
    QList<Qt::Key> keysMissingFor(const QInputEvent &event) const;

    /// Nothing is believed any more: the recorder was flushed.
    void reset();

private:
    Modifier::Value m_believed = Modifier::None;
};

} // namespace Vantle::Agent
