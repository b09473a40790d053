#include "agent/recording/keyreleases.h"

#include "wrappers/qt/extensions/qtquickcommon/compression/syntheticevent.h"

#include <QtGui/QKeyEvent>

namespace Vantle::Agent {

namespace {

// Input that doesn't come from a keyboard has no scan codes.
quint32 keyOfKeyboard(const QKeyEvent &event)
{
    return event.nativeScanCode() != 0 ? event.nativeScanCode() : static_cast<quint32>(event.key());
}

} // namespace

bool KeyReleases::correct(const QEvent &event, QtWrapper::SyntheticEvent *record)
{
    if (record->type != QtWrapper::SyntheticEvent::Key)
        return true;
    const quint32 key = keyOfKeyboard(static_cast<const QKeyEvent &>(event));
    if (record->keyEventType != QtWrapper::SyntheticEvent::KeyRelease) {
        m_texts.insert(key, record->text);
        return true;
    }
    if (const auto text = m_texts.constFind(key); text != m_texts.cend()) {
        record->text = *text;
        m_texts.erase(text);
    }
    return !record->text.isEmpty();
}

bool KeyReleases::knows(const QKeyEvent &event) const
{
    return m_texts.contains(keyOfKeyboard(event));
}

} // namespace Vantle::Agent
