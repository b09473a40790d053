#include "agent/recording/shortcutsequences.h"

#include <QtGui/QKeyEvent>
#include <QtGui/private/qguiapplication_p.h>

#include <utility>

namespace Vantle::Agent {

namespace {

Qt::KeyboardModifiers modifierOf(int key)
{
    switch (key) {
    case Qt::Key_Shift: return Qt::ShiftModifier;
    case Qt::Key_Control: return Qt::ControlModifier;
    case Qt::Key_Alt: return Qt::AltModifier;
    case Qt::Key_Meta: return Qt::MetaModifier;
    default: return {};
    }
}

bool isWaitingForNextKey()
{
    QGuiApplicationPrivate *const application = QGuiApplicationPrivate::instance();
    return application && application->shortcutMap.state() == QKeySequence::PartialMatch;
}

} // namespace

void ShortcutSequences::look()
{
    m_isExpecting = m_isExpecting || isWaitingForNextKey();
}

bool ShortcutSequences::takeRelease(const QKeyEvent &release)
{
    if (const Qt::KeyboardModifiers modifier = modifierOf(release.key())) {
        m_released |= modifier;
        return false;
    }
    if (release.isAutoRepeat())
        return false;
    m_modifiers = std::exchange(m_released, {});
    return std::exchange(m_isExpecting, isWaitingForNextKey());
}

Qt::KeyboardModifiers ShortcutSequences::modifiersOf(const QKeyEvent &release) const
{
    return release.modifiers() | m_modifiers;
}

} // namespace Vantle::Agent
