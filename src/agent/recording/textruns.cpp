#include "agent/recording/textruns.h"

#include <QtCore/QString>

#include <algorithm>
#include <utility>

namespace Vantle::Agent {

namespace {

using QtWrapper::SyntheticEvent;

bool isKeyPress(const SyntheticEvent &record)
{
    return record.type == SyntheticEvent::Key && record.keyEventType == SyntheticEvent::KeyPress;
}

bool isKeyRelease(const SyntheticEvent &record)
{
    return record.type == SyntheticEvent::Key && record.keyEventType == SyntheticEvent::KeyRelease;
}

bool isSingleCharacter(const QString &text)
{
    return text.size() == 1 || (text.size() == 2 && text.front().isHighSurrogate());
}

/// The character that the record writes; empty for keys that write none. The
/// halves of a character beyond 16 bits count as unprintable, so that such a
/// character comes in the brackets of a key's name.
QString characterOf(const SyntheticEvent &record)
{
    const QString text = QString::fromUtf8(record.text);
    if (isSingleCharacter(text))
        return text;
    const bool isInBrackets = text.size() == 4 && text.startsWith(u'<') && text.endsWith(u'>');
    return isInBrackets && isSingleCharacter(text.mid(1, 2)) && text.at(1).isSurrogate() ? text.mid(1, 2) : QString();
}

bool isModifierAlone(const SyntheticEvent &record)
{
    return isKeyPress(record) && record.text.isEmpty();
}

QString textOf(const SyntheticEvent &record)
{
    if (record.type == SyntheticEvent::InputMethod)
        return QString::fromUtf8(record.inputMethodText);
    return isKeyPress(record) ? characterOf(record) : QString();
}

bool isBeyondAscii(QChar character)
{
    return character.unicode() >= 0x80;
}

} // namespace

void TextRuns::take(const SyntheticEvent &record)
{
    if (!m_run.empty() && belongsToRun(record)) {
        m_run.push_back(record);
        return;
    }
    letGo();
    if (!textOf(record).isEmpty())
        m_run.push_back(record);
    else
        pass(record);
}

bool TextRuns::belongsToRun(const SyntheticEvent &record) const
{
    if (isKeyRelease(record))
        return !characterOf(record).isEmpty();
    if (isModifierAlone(record))
        return true;
    return !textOf(record).isEmpty() && record.object && record.object->sameAs(m_run.front().object);
}

void TextRuns::letGo()
{
    const std::vector<SyntheticEvent> run = std::exchange(m_run, {});
    if (run.empty())
        return;
    QString text;
    for (const SyntheticEvent &record : run)
        text += textOf(record);
    // An opening bracket at the start of a text introduces the name of a key,
    // so that what is typed behind it can't be told in one.
    const bool isPlain = std::none_of(text.cbegin(), text.cend(), isBeyondAscii);
    if (run.size() == 1 || isPlain || (text.startsWith(u'<') && text.size() > 1)) {
        for (const SyntheticEvent &record : run)
            pass(record);
        return;
    }
    SyntheticEvent whole;
    whole.type = SyntheticEvent::InputMethod;
    whole.inputMethodText = text.toUtf8();
    whole.object = run.front().object;
    whole.objectName = run.front().objectName;
    whole.objectClass = run.front().objectClass;
    whole.ready = run.front().ready;
    whole.timestamp = run.front().timestamp;
    pass(whole);
    // These may be held for something that comes later.
    for (const SyntheticEvent &record : run) {
        if (isModifierAlone(record))
            pass(record);
    }
}

} // namespace Vantle::Agent
