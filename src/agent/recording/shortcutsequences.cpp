#include "agent/recording/shortcutsequences.h"

#include <QtGui/QKeyEvent>
#include <QtGui/private/qguiapplication_p.h>

#include <utility>

namespace Vantle::Agent {

namespace {

bool isModifier(int key)
{
    return key >= Qt::Key_Shift && key <= Qt::Key_ScrollLock;
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
    if (isModifier(release.key()) || release.isAutoRepeat())
        return false;
    return std::exchange(m_isExpecting, isWaitingForNextKey());
}

} // namespace Vantle::Agent
