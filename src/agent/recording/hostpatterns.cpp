#include "agent/recording/hostpatterns.h"

#include "agent/recording/hoststatements.h"

#include <QtCore/QPoint>
#include <QtCore/Qt>

#include <chrono>
#include <cstdlib>
#include <utility>

namespace Vantle::Agent {

namespace {

using QtWrapper::SyntheticEvent;

// A long click is played for less than a second; whoever holds a button for
// clearly longer may mean that.
constexpr std::chrono::milliseconds longestClick(1800);

std::chrono::milliseconds timeBetween(const SyntheticEvent &press, const SyntheticEvent &release)
{
    return std::chrono::milliseconds(release.timestamp - press.timestamp);
}

/// The name by which scripts press the modifier key; null for other keys.
const char *nameOfModifier(int key)
{
    switch (key) {
    case Qt::Key_Shift: return "<Shift>";
    case Qt::Key_Control: return "<Ctrl>";
    case Qt::Key_Alt: return "<Alt>";
    case Qt::Key_Meta: return "<Meta>";
    default: return nullptr;
    }
}

bool isModifierPress(const SyntheticEvent &record)
{
    return record.type == SyntheticEvent::Key && record.keyEventType == SyntheticEvent::KeyPress
        && nameOfModifier(record.key);
}

bool isMouse(const SyntheticEvent &record, SyntheticEvent::MouseEventType type)
{
    return record.type == SyntheticEvent::Mouse && record.mouseEventType == type;
}

} // namespace

void HostPatterns::take(const SyntheticEvent &record)
{
    m_modifier.reset();
    if (isModifierPress(record))
        m_modifier = record;
    if (isMouse(record, SyntheticEvent::Press))
        m_press = record;
    if (!isMouse(record, SyntheticEvent::Release)) {
        pass(record);
    } else if (m_press && m_press->button == record.button && isHeldLong(record)) {
        recordHeld(record);
    } else {
        m_press.reset();
        pass(record);
    }
}

bool HostPatterns::isHeldLong(const SyntheticEvent &release) const
{
    const int way = std::abs(release.globalX - m_press->globalX) + std::abs(release.globalY - m_press->globalY);
    return m_press->ready && way < m_dragDistance() && timeBetween(*m_press, release) > longestClick;
}

void HostPatterns::recordHeld(const SyntheticEvent &release)
{
    const SyntheticEvent press = *std::exchange(m_press, std::nullopt);
    // The press is of no use without its release.
    m_finish(press);
    HostStatements::mousePress(press);
    HostStatements::snooze(timeBetween(press, release), press);
    HostStatements::mouseRelease(press, release);
}

void HostPatterns::takeModifierRelease(const SyntheticEvent &record)
{
    const std::optional<SyntheticEvent> press = std::exchange(m_modifier, std::nullopt);
    if (!press || press->key != record.key)
        return;
    m_finish(*press);
    HostStatements::keyPress(*press, nameOfModifier(press->key));
    HostStatements::keyRelease(*press, nameOfModifier(press->key));
}

void HostPatterns::takeDrop(const SyntheticEvent &target)
{
    const std::optional<SyntheticEvent> press = std::exchange(m_press, std::nullopt);
    if (!press)
        return;
    m_finish(*press);
    HostStatements::dragAndDrop(*press, target);
}

void HostPatterns::reset()
{
    m_press.reset();
    m_modifier.reset();
}

} // namespace Vantle::Agent
