#include "agent/recording/modifiertracker.h"

#include "wrappers/qt/extensions/qtquickcommon/compression/syntheticevent.h"
#include "wrappers/qt/extensions/qtquickcommon/recording/qteventtranslation.h"

#include <QtGui/QInputEvent>

#include <array>

namespace Vantle::Agent {

namespace {

struct ModifierKey
{
    Modifier::Value modifier;
    Qt::Key key;
};

constexpr std::array modifierKeys{
    ModifierKey{Modifier::Control, Qt::Key_Control},
    ModifierKey{Modifier::Shift, Qt::Key_Shift},
    ModifierKey{Modifier::Alt, Qt::Key_Alt},
    ModifierKey{Modifier::Win, Qt::Key_Meta},
};

Modifier::Value heldIn(const QInputEvent &event)
{
    return QtWrapper::qtModifiersToModifierValue(static_cast<unsigned int>(event.modifiers().toInt()));
}

/// Whether it is one with which statements begin that tell modifiers.
bool beginsSomething(const QInputEvent &event)
{
    switch (event.type()) {
    case QEvent::MouseButtonPress:
    case QEvent::TouchBegin:
    case QEvent::Wheel: return true;
    default: return false;
    }
}

} // namespace

void ModifierTracker::noteRecord(const QtWrapper::SyntheticEvent &record)
{
    if (record.type != QtWrapper::SyntheticEvent::Key)
        return;
    if (record.keyEventType == QtWrapper::SyntheticEvent::KeyRelease)
        m_believed &= ~record.modifiers;
    else
        m_believed |= record.modifiers;
}

bool ModifierTracker::isContradictedBy(const QInputEvent &event) const
{
    return beginsSomething(event) && (m_believed & ~heldIn(event)) != Modifier::None;
}

QList<Qt::Key> ModifierTracker::keysMissingFor(const QInputEvent &event) const
{
    QList<Qt::Key> keys;
    for (const ModifierKey &candidate : modifierKeys) {
        if (beginsSomething(event) && (heldIn(event) & ~m_believed & candidate.modifier) != Modifier::None)
            keys.append(candidate.key);
    }
    return keys;
}

void ModifierTracker::reset()
{
    m_believed = Modifier::None;
}

} // namespace Vantle::Agent
