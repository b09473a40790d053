#include "naivemodel.h"

#include "naivehelpers.h"

#include "hook/class.h"
#include "hook/inspector.h"

using namespace Vantle;

namespace VantleTest {

NaiveModel::NaiveModel(const TestSettings &settings, bool hasClock) : m_settings(settings), m_hasClock(hasClock)
{
}

void NaiveModel::eat(const SyntheticEvent &event)
{
    const Class *html = Inspector::self()->classByName(QStringLiteral("HTML_Object"));
    if (html && event.objectClass->isSubClassOf(html))
        return;
    queue.push_back(event);
    run(event.timestamp);
}

void NaiveModel::ring(qint32 id, quint64 now)
{
    if (id != alarmId)
        return;
    alarmId = 0;
    run(now);
}

void NaiveModel::run(quint64 now)
{
    int pattern = 0;
    while (pattern < patternCount) {
        const Answer answer = ask(pattern, now);
        if (answer.verdict == Partial)
            return;
        if (answer.verdict == PartialWithAlarm) {
            if (!m_hasClock)
                return;
            if (alarmId != 0)
                alarmCalls.push_back({alarmId, std::nullopt});
            alarmId = ++m_lastAlarm;
            alarmCalls.push_back({alarmId, 2 * m_settings.time});
            return;
        }
        if (answer.verdict == Complete) {
            take(answer);
            if (stuck)
                return;
            pattern = 0;
        } else {
            ++pattern;
        }
    }
    drop(queue.size());
}

void NaiveModel::take(const Answer &answer)
{
    if (answer.consumed == 0)
        stuck = true;
    statements.insert(statements.end(), answer.written.begin(), answer.written.end());
    drop(answer.consumed);
}

void NaiveModel::drop(std::size_t count)
{
    for (std::size_t i = 0; i < count; ++i) {
        if (queue[i].type != E::Key)
            continue;
        if (queue[i].keyEventType == E::KeyRelease)
            modifiers &= ~int(queue[i].modifiers);
        else
            modifiers |= int(queue[i].modifiers);
    }
    queue.erase(queue.begin(), queue.begin() + std::ptrdiff_t(count));
}

void NaiveModel::finish()
{
    if (m_hasClock && alarmId != 0) {
        alarmCalls.push_back({alarmId, std::nullopt});
        alarmId = 0;
    }
    for (int pattern = 0; pattern < patternCount; ++pattern) {
        m_finishing[std::size_t(pattern)] = true;
        const Answer answer = ask(pattern, 0);
        if (answer.verdict == Complete) {
            take(answer);
            return;
        }
        if (answer.verdict != No)
            stuck = true;
    }
}

void NaiveModel::reset()
{
    queue.clear();
    modifiers = 0;
    m_finishing.fill(false);
}

NaiveModel::Answer NaiveModel::ask(int pattern, quint64 now) const
{
    if (queue.empty())
        return {};
    const bool last = m_finishing[std::size_t(pattern)];
    switch (pattern + 1) {
    case 1: return touchFlick(last);
    case 2: return touchGesture(last);
    case 3: return doubleTap(last);
    case 4: return tapOrDrag(last);
    case 5: return mouseFlick(last);
    case 6: return doubleClick(last, now);
    case 7: return mouseDrag(last, true);
    case 8: return mouseDrag(last, false);
    case 9: return inputMethod();
    case 10: return textInput(last);
    case 11: return mouseClick(last, true);
    case 12: return mouseClick(last, false);
    case 13: return wheel(last);
    case 14: return windowClose(last);
    case 15: return windowMove(last);
    case 16: return windowResize(last);
    default: return windowState();
    }
}

NaiveModel::Answer NaiveModel::inputMethod() const
{
    if (queue[0].type != E::InputMethod)
        return {};
    Statement s = statement("type", queue[0], queue[0].timestamp);
    s.text = queue[0].inputMethodText;
    return {Complete, 1, {s}};
}

NaiveModel::Answer NaiveModel::textInput(bool last) const
{
    const E &head = queue[0];
    if (head.type != E::Key || head.keyEventType != E::KeyPress)
        return {};
    bool decided = false;
    bool firstRelease = true;
    for (const E &e : queue) {
        if (e.type != E::Key || !same(e.object, head.object)) {
            decided = true;
        } else if (e.keyEventType == E::KeyRelease) {
            decided = (firstRelease && e.text == "<") || e.text.size() > 1;
            firstRelease = false;
        }
        if (decided)
            break;
    }
    if (!decided && !last)
        return {Partial, 0, {}};

    Answer answer{Complete, 0, {}};
    Statement typed = statement("type", head, head.timestamp);
    while (answer.consumed < queue.size()) {
        const E &e = queue[answer.consumed];
        if (e.type != E::Key || !same(e.object, head.object))
            break;
        ++answer.consumed;
        if (e.keyEventType == E::KeyRelease)
            continue;
        if ((typed.text.isEmpty() && e.text == "<") || e.text.size() > 1) {
            if (!typed.text.isEmpty())
                answer.written.push_back(typed);
            Statement special = statement("type", e, e.timestamp);
            special.text = e.text;
            answer.written.push_back(special);
            return answer;
        }
        typed.text += e.text;
    }
    if (!typed.text.isEmpty())
        answer.written.push_back(typed);
    return answer;
}

NaiveModel::Answer NaiveModel::windowClose(bool last) const
{
    for (std::size_t i = 0; i < queue.size(); ++i) {
        if (move(queue[i]))
            continue;
        if (queue[i].type != E::WindowClose || !queue[i].ready)
            return {};
        return {Complete, i + 1, {statement("closeWindow", queue[i], queue[i].timestamp)}};
    }
    return {last ? No : Partial, 0, {}};
}

NaiveModel::Answer NaiveModel::windowMove(bool last) const
{
    const E &first = queue[0];
    if (first.type != E::WindowMove)
        return {};
    std::size_t n = 0;
    while (n + 1 < queue.size() && queue[n + 1].type == E::WindowMove && same(queue[n + 1].object, first.object))
        ++n;
    if (n + 1 == queue.size() && !last)
        return {Partial, 0, {}};
    if (n == 0)
        return {};
    Answer answer{Complete, n + 1, {}};
    Statement s = statement("moveWindow", first, first.timestamp);
    s.numbers = {queue[n].windowX - first.oldWindowX, queue[n].windowY - first.oldWindowY};
    if (s.numbers[0] != 0 || s.numbers[1] != 0)
        answer.written.push_back(s);
    return answer;
}

NaiveModel::Answer NaiveModel::windowResize(bool last) const
{
    const E &first = queue[0];
    if (first.type != E::WindowResize)
        return {};
    std::size_t n = 0;
    while (n + 1 < queue.size() && queue[n + 1].type == E::WindowResize && same(queue[n + 1].object, first.object))
        ++n;
    if (n + 1 == queue.size() && !last)
        return {Partial, 0, {}};
    Answer answer{Complete, n + 1, {}};
    if (n > 0) {
        Statement s = statement("setWindowSize", first, first.timestamp);
        s.numbers = {queue[n].windowWidth, queue[n].windowHeight};
        answer.written.push_back(s);
    }
    return answer;
}

NaiveModel::Answer NaiveModel::windowState() const
{
    if (queue[0].type != E::WindowStateChange || !queue[0].ready)
        return {};
    Statement s = statement("setWindowState", queue[0], queue[0].timestamp);
    s.numbers = {queue[0].windowState};
    return {Complete, 1, {s}};
}

} // namespace VantleTest
