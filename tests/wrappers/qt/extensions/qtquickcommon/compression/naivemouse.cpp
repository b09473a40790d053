#include "naivemodel.h"

#include "naivehelpers.h"

#include "hook/class.h"
#include "hook/inspector.h"

#include <cstdlib>

using namespace Vantle;

namespace VantleTest {

namespace {

long manhattan(const E &a, const E &b)
{
    return std::labs(long(b.globalY) - long(a.globalY)) + std::labs(long(b.globalX) - long(a.globalX));
}

bool dead(const SharedPtr<Object> &object)
{
    void *native = nullptr;
    return !object->get(&native);
}

const Class *itemType()
{
    return Inspector::self()->classByName(QStringLiteral("QQuickItem"));
}

} // namespace

NaiveModel::Answer NaiveModel::mouseFlick(bool last) const
{
    const E &press = queue[0];
    if (press.type != E::Mouse || press.mouseEventType != E::Press)
        return {};
    std::size_t at[3] = {0, 0, 0};
    std::size_t i = 1;
    for (int part = 0; part < 3; ++part) {
        while (i < queue.size() && move(queue[i]))
            ++i;
        if (i == queue.size())
            return {last ? No : Partial, 0, {}};
        const E &e = queue[i];
        if (part == 1) {
            if (e.type != E::Mouse || e.mouseEventType != E::Release || e.button != press.button)
                return {};
        } else {
            if (e.type != E::Flick || e.flickState != (part == 0 ? E::FlickStarted : E::FlickEnded))
                return {};
            // Where the pressed row is gone, the flickable has to be the same.
            const bool rowIsGone = part == 2 && dead(e.flickObject) && dead(press.object);
            if (rowIsGone ? !same(e.object, queue[at[0]].object) : !same(e.flickObject, press.object))
                return {};
        }
        at[part] = i++;
    }
    const E &started = queue[at[0]];
    const E &ended = queue[at[2]];
    Statement s = statement("flick", started, press.timestamp);
    s.numbers = {ended.contentX - started.contentX, ended.contentY - started.contentY};
    return {Complete, i, {s}};
}

NaiveModel::Answer NaiveModel::doubleClick(bool last, quint64 now) const
{
    int m = modifiers;
    std::size_t i = 0;
    while (i < queue.size() && (modifierKey(queue[i]) || move(queue[i]))) {
        if (queue[i].type == E::Key)
            m |= queue[i].modifiers;
        ++i;
    }
    if (i == queue.size())
        return {last ? No : Partial, 0, {}};
    const E &press = queue[i++];
    if (press.type != E::Mouse || press.mouseEventType != E::Press || !press.ready)
        return {};
    while (i < queue.size() && move(queue[i]))
        ++i;
    if (i == queue.size())
        return {last ? No : Partial, 0, {}};
    const E &release = queue[i++];
    if (release.type != E::Mouse || release.mouseEventType != E::Release || release.button != press.button)
        return {};
    if (!same(release.object, press.object) || manhattan(press, release) >= m_settings.distance)
        return {};
    while (i < queue.size() && move(queue[i]))
        ++i;
    if (i == queue.size()) {
        if (last || now - release.timestamp > m_settings.time)
            return {};
        return {PartialWithAlarm, 0, {}};
    }
    const E &second = queue[i++];
    if (second.type != E::Mouse || second.mouseEventType != E::Press || second.button != press.button)
        return {};
    if (manhattan(press, second) >= m_settings.distance || !same(second.object, press.object))
        return {};
    if (release.timestamp - press.timestamp > m_settings.time)
        return {};
    Statement s = statement("doubleClick", press, press.timestamp);
    s.objectClass = press.objectClass;
    s.numbers = {press.x, press.y};
    s.button = press.button;
    s.modifiers = Modifier::Value(m);
    return {Complete, i, {s}};
}

NaiveModel::Answer NaiveModel::mouseDrag(bool last, bool itemsOnly) const
{
    int m = modifiers;
    std::size_t i = 0;
    while (i < queue.size() && (modifierKey(queue[i]) || move(queue[i]))) {
        if (queue[i].type == E::Key)
            m |= queue[i].modifiers;
        ++i;
    }
    if (i == queue.size())
        return {last ? No : Partial, 0, {}};
    const E &press = queue[i++];
    if (press.type != E::Mouse || press.mouseEventType != E::Press || !press.ready)
        return {};
    if (itemsOnly && !press.objectClass->isSubClassOf(itemType()))
        return {};
    const E *crossing = nullptr;
    while (i < queue.size() && move(queue[i])) {
        if (!crossing && manhattan(press, queue[i]) >= m_settings.distance)
            crossing = &queue[i];
        ++i;
    }
    if (i == queue.size())
        return {last ? No : Partial, 0, {}};
    const E &release = queue[i++];
    if (release.type != E::Mouse || release.mouseEventType != E::Release || release.button != press.button)
        return {};
    if (manhattan(press, release) < m_settings.distance)
        return {};
    if (!crossing)
        crossing = &press;
    const E &from = itemsOnly ? *crossing : press;
    Statement s = statement("mouseDrag", press, press.timestamp);
    s.numbers = {press.x, press.y, release.globalX - from.globalX, release.globalY - from.globalY};
    s.button = press.button;
    s.modifiers = Modifier::Value(m);
    s.isLong = itemsOnly && crossing->timestamp - press.timestamp > quint32(2 * m_settings.time);
    return {Complete, i, {s}};
}

NaiveModel::Answer NaiveModel::mouseClick(bool last, bool itemsOnly) const
{
    int m = modifiers;
    std::size_t i = 0;
    while (i < queue.size() && (modifierKey(queue[i]) || move(queue[i]))) {
        if (queue[i].type == E::Key)
            m |= queue[i].modifiers;
        ++i;
    }
    if (i == queue.size())
        return {last ? No : Partial, 0, {}};
    const E &press = queue[i++];
    if (press.type != E::Mouse || press.mouseEventType != E::Press || !press.ready)
        return {};
    if (itemsOnly && !press.objectClass->isSubClassOf(itemType()))
        return {};
    while (i < queue.size() && move(queue[i]))
        ++i;
    if (i == queue.size())
        return {last ? No : Partial, 0, {}};
    const E &release = queue[i++];
    if (release.type != E::Mouse || release.mouseEventType != E::Release || release.button != press.button)
        return {};
    Statement s = statement("mouseClick", press, press.timestamp);
    s.objectClass = press.objectClass;
    s.numbers = {press.x, press.y};
    s.button = press.button;
    s.modifiers = Modifier::Value(m);
    s.isLong = itemsOnly && release.timestamp - press.timestamp > quint32(2 * m_settings.time);
    return {Complete, i, {s}};
}

NaiveModel::Answer NaiveModel::wheel(bool last) const
{
    int m = modifiers;
    std::size_t i = 0;
    while (i < queue.size() && (modifierKey(queue[i]) || move(queue[i]))) {
        if (queue[i].type == E::Key)
            m |= queue[i].modifiers;
        ++i;
    }
    if (i == queue.size())
        return {last ? No : Partial, 0, {}};
    const E &first = queue[i++];
    if (first.type != E::Wheel || !first.ready)
        return {};
    Statement s = statement("mouseWheel", first, first.timestamp);
    s.numbers = {first.x, first.y, first.wheelDeltaX, first.wheelDeltaY};
    s.modifiers = Modifier::Value(m);
    for (; i < queue.size(); ++i) {
        if (move(queue[i]))
            continue;
        if (queue[i].type != E::Wheel || !queue[i].ready || !same(queue[i].object, first.object))
            return {Complete, i, {s}};
        s.numbers[2] += queue[i].wheelDeltaX;
        s.numbers[3] += queue[i].wheelDeltaY;
    }
    if (!last)
        return {Partial, 0, {}};
    return {Complete, i, {s}};
}

} // namespace VantleTest
