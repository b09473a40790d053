#include "agent/recording/inputledger.h"

#include "agent/objecttree.h"
#include "hook/inspector.h"
#include "hook/method.h"
#include "wrappers/qt/bynamefunctions.h"
#include "wrappers/qt/dragrules.h"
#include "wrappers/qt/extensions/qtquickcommon/recording/inputconversions.h"

#include <QtCore/QDateTime>
#include <QtCore/QPoint>

#include <iterator>

namespace Vantle::Agent {

namespace {

using QtWrapper::SyntheticEvent;

QTime timeOf(const SyntheticEvent &record)
{
    return QDateTime::fromMSecsSinceEpoch(static_cast<qint64>(record.timestamp)).time();
}

bool isText(const SyntheticEvent &record)
{
    return record.type == SyntheticEvent::InputMethod
        || (record.type == SyntheticEvent::Key && record.keyEventType == SyntheticEvent::KeyPress
            && !record.text.isEmpty());
}

bool isPress(const SyntheticEvent &record)
{
    return record.type == SyntheticEvent::Mouse && record.mouseEventType == SyntheticEvent::Press;
}

bool isTouch(const SyntheticEvent &record, SyntheticEvent::TouchEventType type)
{
    return record.type == SyntheticEvent::Touch && record.touch.touchEventType == type;
}

/// Whether a statement can begin with \p record.
bool isBeginning(const SyntheticEvent &record)
{
    return isPress(record) || isTouch(record, SyntheticEvent::TouchBegin) || isText(record)
        || record.type == SyntheticEvent::Wheel || record.type == SyntheticEvent::WindowClose
        || record.type == SyntheticEvent::WindowStateChange;
}

/// A key with nothing to its name but a control character, such as a line feed.
bool isUntypable(const SyntheticEvent &record)
{
    return record.type == SyntheticEvent::Key && record.text.size() == 1
        && !QChar::isPrint(static_cast<uchar>(record.text.front()));
}

QString typed(const SyntheticEvent &record)
{
    return QString::fromUtf8(record.type == SyntheticEvent::InputMethod ? record.inputMethodText : record.text);
}

/// Why nobody could act on the object of \p record; empty if one could.
QString obstacleTo(const SyntheticEvent &record)
{
    return record.ready || !record.object ? QString() : notReadyReason(record.object);
}

QString inWords(const SyntheticEvent &record)
{
    const QString object = record.objectName.isEmpty() ? QStringLiteral("a window")
                                                       : QString::fromUtf8(record.objectName);
    switch (record.type) {
    case SyntheticEvent::Mouse: return QStringLiteral("a press on %1").arg(object);
    case SyntheticEvent::Touch: return QStringLiteral("a touch on %1").arg(object);
    case SyntheticEvent::Wheel: return QStringLiteral("a turn of the wheel over %1").arg(object);
    case SyntheticEvent::WindowClose: return QStringLiteral("that %1 was closed").arg(object);
    case SyntheticEvent::WindowStateChange: return QStringLiteral("a change of the state of %1").arg(object);
    default: return QStringLiteral("a key pressed on %1").arg(object);
    }
}

/// How many characters a typed text stands for; a key with a name is one.
qsizetype charactersIn(const QString &text)
{
    return text.size() > 1 && text.startsWith(u'<') ? 1 : text.toUcs4().size();
}

SharedPtr<Object> number(int value)
{
    return Inspector::self()->createInteger(value);
}

QPoint wayFrom(const SyntheticEvent &press, const SyntheticEvent &release)
{
    return {release.globalX - press.globalX, release.globalY - press.globalY};
}

SharedPtr<Object> buttonOf(const SyntheticEvent &press)
{
    return number(static_cast<int>(QtWrapper::buttonValueToQtButton(press.button)));
}

} // namespace

void InputLedger::setObservers(Remark remark, Outlook outlook)
{
    m_remark = std::move(remark);
    m_outlook = std::move(outlook);
}

void InputLedger::take(const SyntheticEvent &record)
{
    if (isUntypable(record)) {
        if (isText(record) && m_remark)
            m_remark(QStringLiteral("%1: it has neither a name nor a letter").arg(inWords(record)), record);
        return;
    }
    m_foreseen.reset();
    if (isBeginning(record))
        m_entries.push_back({record, std::nullopt, obstacleTo(record)});
    else
        noteEnd(record);
    tellOutlook();
    pass(record);
}

void InputLedger::foresee(const SyntheticEvent &press)
{
    if (!isPress(press))
        return;
    m_foreseen = press;
    tellOutlook();
}

void InputLedger::noteEnd(const SyntheticEvent &record)
{
    const bool isRelease = record.type == SyntheticEvent::Mouse && record.mouseEventType == SyntheticEvent::Release;
    if (!isRelease && !isTouch(record, SyntheticEvent::TouchEnd))
        return;
    for (Entry &entry : m_entries) {
        const bool isIts = entry.record.type == record.type && !entry.end
            && (!isRelease || entry.record.button == record.button);
        if (isIts) {
            entry.end = record;
            return;
        }
    }
}

SharedPtr<Object> InputLedger::objectOf(const EventData &statement)
{
    const auto entry = entryOf(statement);
    return entry != m_entries.end() ? entry->record.object : SharedPtr<Object>();
}

void InputLedger::noteStatement(const EventData &statement)
{
    const auto first = entryOf(statement);
    if (first == m_entries.end())
        return;
    const auto end = endOf(statement, first);
    remarkUpTo(first);
    m_entries.erase(first, end);
    m_hasOutlook = false;
    tellOutlook();
}

InputLedger::Entries::iterator InputLedger::entryOf(const EventData &statement)
{
    const bool isTyped = statement.method()->name() == QLatin1String("type");
    for (auto entry = m_entries.begin(); entry != m_entries.end(); ++entry) {
        // A text that begins with a modifier key bears the time of that.
        if (timeOf(entry->record) == statement.time || (isTyped && isText(entry->record)))
            return entry;
    }
    return m_entries.end();
}

/// Behind the last entry that \p statement, which begins with \p first, tells.
InputLedger::Entries::iterator InputLedger::endOf(const EventData &statement, Entries::iterator first)
{
    const QString function = statement.method()->name();
    auto end = std::next(first);
    const auto skip = [&](SyntheticEvent::Type type, qsizetype count) {
        for (; count > 0 && end != m_entries.end() && end->record.type == type; --count)
            ++end;
    };
    if (function == QLatin1String("doubleClick")) {
        skip(SyntheticEvent::Mouse, 1);
    } else if (function == QLatin1String("doubleTap")) {
        skip(SyntheticEvent::Touch, 1);
    } else if (function == QLatin1String("mouseWheel")) {
        while (end != m_entries.end() && end->record.type == SyntheticEvent::Wheel
               && end->record.objectName == first->record.objectName)
            ++end;
    } else if (function == QLatin1String("type") && statement.arguments().size() == 1) {
        void *text = nullptr;
        statement.arguments().at(0)->get(&text);
        qsizetype left = text ? charactersIn(*static_cast<QString *>(text)) : 1;
        left -= charactersIn(typed(first->record));
        for (; left > 0 && end != m_entries.end() && isText(end->record); ++end)
            left -= charactersIn(typed(end->record));
    }
    return end;
}

void InputLedger::claim(const SyntheticEvent &beginning)
{
    m_entries.remove_if([&](const Entry &entry) {
        return entry.record.type == beginning.type && entry.record.timestamp == beginning.timestamp;
    });
}

void InputLedger::settle()
{
    remarkUpTo(m_entries.end());
    tellOutlook();
}

void InputLedger::remarkUpTo(Entries::iterator end)
{
    const Entries lost(m_entries.begin(), end);
    m_entries.erase(m_entries.begin(), end);
    for (const Entry &entry : lost) {
        const QString reason = !entry.obstacle.isEmpty() ? entry.obstacle
            : entry.end || isText(entry.record)          ? QStringLiteral("other input came in between")
                                                         : QStringLiteral("it did not come to an end");
        if (m_remark)
            m_remark(QStringLiteral("%1: %2").arg(inWords(entry.record), reason), entry.record);
    }
}

void InputLedger::tellOutlook()
{
    if (!m_outlook)
        return;
    QList<EventData> statements;
    for (const Entry &entry : m_entries) {
        if (const std::optional<EventData> statement = outlookOf(entry))
            statements.append(*statement);
    }
    if (m_foreseen) {
        if (const std::optional<EventData> statement = outlookOf({*m_foreseen, std::nullopt, QString()}))
            statements.append(*statement);
    }
    if (statements.isEmpty() && !m_hasOutlook)
        return;
    m_hasOutlook = !statements.isEmpty();
    m_outlook(statements);
}

std::optional<EventData> InputLedger::outlookOf(const Entry &entry) const
{
    const SyntheticEvent &record = entry.record;
    const QString name = QString::fromUtf8(record.objectName);
    std::optional<EventData> statement;
    if (!record.ready && !isText(record))
        return std::nullopt;
    if (isText(record)) {
        statement.emplace(QtWrapper::typeByNameFn(), name,
                          ObjectList{Inspector::self()->createString(typed(record))});
    } else if (isPress(record) && !entry.end) {
        statement.emplace(QtWrapper::mousePressOCBByNameFn(), name,
                          ObjectList{number(record.x), number(record.y), buttonOf(record)});
    } else if (isPress(record)) {
        const QPoint way = wayFrom(record, *entry.end);
        const QPoint distance = QtWrapper::distanceBehindCrossing(way);
        if (way.manhattanLength() < m_dragDistance())
            statement.emplace(QtWrapper::mouseClickOCBByNameFn(), name,
                              ObjectList{number(record.x), number(record.y), buttonOf(record)});
        else
            statement.emplace(QtWrapper::mouseDragByNameFn(), name,
                              ObjectList{number(record.x), number(record.y), number(distance.x()),
                                         number(distance.y()), number(0), buttonOf(record)});
    } else if (isTouch(record, SyntheticEvent::TouchBegin) && entry.end) {
        statement.emplace(QtWrapper::tapObjectOCByNameFn(), name, ObjectList{number(record.x), number(record.y)});
    } else if (record.type == SyntheticEvent::Wheel) {
        statement.emplace(QtWrapper::mouseWheelByNameFn(), name,
                          ObjectList{number(record.x), number(record.y), number(record.wheelDeltaX),
                                     number(record.wheelDeltaY), number(0)});
    }
    if (statement)
        statement->time = timeOf(record);
    return statement;
}

} // namespace Vantle::Agent
