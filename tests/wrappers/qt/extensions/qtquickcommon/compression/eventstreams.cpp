#include "eventstreams.h"

#include <algorithm>

using namespace Vantle;

namespace VantleTest {

StreamGenerator::StreamGenerator()
{
    const Class *page = classNamed("HTML_Object");
    const TestObjectPtr item = makeObject("item", itemClass(), {3, 7});
    const TestObjectPtr alias = makeObject("alias", itemClass());
    alias->wrapSameAs(item.get());
    m_objects = {item,
                 alias,
                 makeObject("button", buttonClass()),
                 makeObject("widget", widgetClass(), {50, 50}),
                 makeObject("other", itemClass()),
                 makeObject("page", page)};
    for (const TestObjectPtr &object : m_objects)
        m_script.addObject(object);
    m_nothing = makeObject("nothing", itemClass());
    m_nothing->setAlive(false);
    m_script.addObject(m_nothing);
}

std::string StreamGenerator::declarations() const
{
    std::string text;
    for (const TestObjectPtr &object : m_objects) {
        text += EventScript::writeDeclaration(*object);
        text += object->name() == "alias" ? " same-as item\n" : "\n";
    }
    return text + EventScript::writeDeclaration(*m_nothing) + "\ndies nothing\n";
}

EventStream StreamGenerator::make(std::uint64_t seed)
{
    // Neighbouring seeds begin far apart.
    m_random.seed(seed * 0x9E3779B97F4A7C15u);
    m_stream = {};
    m_stream.settings.distance = oneOf({4, 4, 4, 4, 1, 10, 0});
    m_stream.settings.time = oneOf({400u, 400u, 400u, 400u, 100u, 0u, 0x80000000u});
    m_stream.hasClock = !chance(10);
    m_time = oneOf<quint64>({1000, 1000, 1000, 0, quint64(1) << 32});
    const std::size_t phrases = 1 + pick(5);
    for (std::size_t i = 0; i < phrases; ++i) {
        m_focus = anyObject();
        m_place = QPoint(oneOf({10, 100, -5}), oneOf({20, 200}));
        addPhrase();
        addNoise();
        addDeath();
        addControl();
    }
    return std::move(m_stream);
}

std::size_t StreamGenerator::pick(std::size_t count)
{
    return static_cast<std::size_t>((m_random() >> 33) % count);
}

quint64 StreamGenerator::laterTime()
{
    const quint64 time = m_stream.settings.time;
    // Half of the steps are small; the rest lie at the boundaries of the rules.
    if (chance(50))
        return m_time += oneOf<quint64>({0, 1, 10, 50});
    if (chance(2))
        return m_time -= m_time ? 1 : 0;
    return m_time += oneOf<quint64>({100, time - (time ? 1 : 0), time, time + 1, 2 * time, 2 * time + 1, 799, 800, 801,
                                     805, 809, 810, 1237});
}

QPoint StreamGenerator::near()
{
    const int distance = m_stream.settings.distance;
    const int x = oneOf({0, 0, 1, 2, distance - 1, distance, -distance, distance / 2, 100});
    const int y = oneOf({0, 0, 0, 1, distance - distance / 2, -1, -100});
    return m_place + QPoint(x, y);
}

TestObjectPtr StreamGenerator::anyObject()
{
    // Web content is refused: a little of it is enough.
    return chance(2) ? m_objects.back() : m_objects[pick(m_objects.size() - 1)];
}

MouseButton::Value StreamGenerator::anyButton()
{
    return oneOf({MouseButton::LeftButton, MouseButton::LeftButton, MouseButton::LeftButton, MouseButton::RightButton,
                  MouseButton::None});
}

Modifier::Value StreamGenerator::anyModifiers()
{
    return oneOf({Modifier::None, Modifier::None, Modifier::Shift, Modifier::Control, Modifier::Shift | Modifier::Alt});
}

QByteArray StreamGenerator::anyText()
{
    return oneOf<const char *>({"", "", "a", "b", "<", "<", "\xC3\xA9", "<Return>"});
}

std::vector<SyntheticEvent::TouchPoint> StreamGenerator::anyFingers()
{
    std::vector<SyntheticEvent::TouchPoint> fingers;
    const std::size_t count = oneOf<std::size_t>({1, 1, 1, 1, 1, 1, 2, 3, 0});
    for (std::size_t i = 0; i < count; ++i) {
        const QPoint at = near();
        fingers.push_back(finger(static_cast<int>(i) + (chance(5) ? 1 : 0), at.x() + oneOf({0.0, 0.0, 0.5, -0.25}),
                                 at.y() + oneOf({0.0, 0.0, 0.75})));
        if (chance(10))
            fingers.back().width = oneOf({1.0, 3.5, 8.0});
        if (chance(10))
            fingers.back().height = oneOf({2.0, -1.0});
    }
    return fingers;
}

void StreamGenerator::add(SyntheticEvent event)
{
    if (chance(4))
        event.ready = false;
    m_stream.steps.push_back({StreamStep::Eat, event.timestamp, std::move(event), {}});
}

void StreamGenerator::addMouseEvent()
{
    switch (pick(4)) {
    case 0: add(mousePress(m_focus, near(), laterTime(), anyButton())); break;
    case 1: add(mouseRelease(m_focus, near(), laterTime(), anyButton())); break;
    case 2: add(mouseMove(m_focus, near(), laterTime())); break;
    default: add(VantleTest::wheel(m_focus, near(), {oneOf({0, 15, -15}), oneOf({0, 15, 120})}, laterTime())); break;
    }
}

void StreamGenerator::addKeyEvent()
{
    const quint64 time = laterTime();
    add(chance(50) ? keyPress(m_focus, anyText(), time, anyModifiers())
                   : keyRelease(m_focus, anyText(), time, anyModifiers()));
}

void StreamGenerator::addTouchEvent()
{
    const auto type = oneOf({SyntheticEvent::TouchBegin, SyntheticEvent::TouchUpdate, SyntheticEvent::TouchEnd});
    SyntheticEvent event = touch(type, m_focus, anyFingers(), laterTime());
    if (chance(10))
        event.touch.primaryIndex = oneOf<quint64>({0, 1, noPrimaryFinger});
    add(std::move(event));
}

void StreamGenerator::addWindowEvent()
{
    const auto place = [this] { return QPoint(oneOf({0, 5, 9}), oneOf({0, 5, 9})); };
    switch (pick(4)) {
    case 0: add(windowClose(m_focus, laterTime())); break;
    case 1: add(windowMove(m_focus, place(), place(), laterTime())); break;
    case 2: add(windowResize(m_focus, {oneOf({100, 200}), 50}, laterTime())); break;
    default: add(VantleTest::windowState(m_focus, oneOf({1, 2, 4}), laterTime())); break;
    }
}

void StreamGenerator::addFlickEvent(SyntheticEvent::FlickState state)
{
    const TestObjectPtr pressed = chance(85) ? m_focus : anyObject();
    const QPoint content(oneOf({0, 3}), oneOf({0, 200, -50}));
    const TestObjectPtr flickable = chance(90) ? m_objects[4] : anyObject();
    add(state == SyntheticEvent::FlickStarted ? flickStarted(flickable, pressed, content, laterTime())
                                              : flickEnded(flickable, pressed, content, laterTime()));
}

void StreamGenerator::addRandomEvent()
{
    const TestObjectPtr before = m_focus;
    if (chance(40))
        m_focus = anyObject();
    switch (pick(8)) {
    case 0:
    case 1: addMouseEvent(); break;
    case 2: addKeyEvent(); break;
    case 3: addTouchEvent(); break;
    case 4: addWindowEvent(); break;
    case 5: addFlickEvent(chance(50) ? SyntheticEvent::FlickStarted : SyntheticEvent::FlickEnded); break;
    case 6: add(inputMethod(m_focus, anyText(), laterTime())); break;
    default:
        if (chance(10))
            add(makeEvent(SyntheticEvent::Invalid, m_focus, laterTime()));
        else
            add(mouseMove(m_focus, near(), laterTime()));
        break;
    }
    m_focus = before;
}

void StreamGenerator::addNoise()
{
    // Something in between is what most rules are about.
    if (m_stream.steps.empty() || chance(40))
        return;
    const std::size_t at = pick(m_stream.steps.size());
    if (chance(30)) {
        m_stream.steps.erase(m_stream.steps.begin() + static_cast<std::ptrdiff_t>(at));
        return;
    }
    addRandomEvent();
    StreamStep noise = m_stream.steps.back();
    if (chance(50)) {
        m_stream.steps.pop_back();
        noise.event.timestamp = noise.time = m_stream.steps[at].time;
        m_stream.steps.insert(m_stream.steps.begin() + static_cast<std::ptrdiff_t>(at), noise);
    }
}

void StreamGenerator::addDeath()
{
    if (m_stream.steps.empty() || chance(75))
        return;
    // Mostly what the phrase is about, and in the middle of it.
    const std::size_t at = m_stream.steps.size() - pick(std::min<std::size_t>(m_stream.steps.size(), 6));
    StreamStep death{StreamStep::Die, m_stream.steps[at - 1].time, SyntheticEvent(),
                     chance(70) ? m_focus : anyObject()};
    m_stream.steps.insert(m_stream.steps.begin() + static_cast<std::ptrdiff_t>(at), std::move(death));
}

void StreamGenerator::addControl()
{
    if (chance(30))
        m_stream.steps.push_back({StreamStep::Ring, laterTime(), SyntheticEvent(), {}});
    if (chance(5))
        m_stream.steps.push_back({StreamStep::RingOther, laterTime(), SyntheticEvent(), {}});
    if (chance(15))
        m_stream.steps.push_back({StreamStep::Finish, m_time, SyntheticEvent(), {}});
    // Now and then one comes without the other.
    if ((m_stream.steps.size() && m_stream.steps.back().kind == StreamStep::Finish && chance(90)) || chance(2))
        m_stream.steps.push_back({StreamStep::Reset, m_time, SyntheticEvent(), {}});
}

void StreamGenerator::addPhrase()
{
    if (chance(20))
        add(keyPress(m_focus, "", laterTime(), anyModifiers()));
    if (chance(10))
        add(mouseMove(m_focus, near(), laterTime()));
    switch (pick(6)) {
    case 0:
    case 1: addMousePhrase(); break;
    case 2: addTouchPhrase(); break;
    case 3: addTyping(); break;
    case 4: addRun(); break;
    default:
        for (std::size_t i = pick(5); i < 5; ++i)
            addRandomEvent();
        break;
    }
}

void StreamGenerator::addClick()
{
    const MouseButton::Value button = anyButton();
    add(mousePress(m_focus, chance(70) ? m_place : near(), laterTime(), button));
    for (std::size_t i = pick(4); i < 2; ++i)
        add(mouseMove(m_focus, near(), laterTime()));
    add(mouseRelease(chance(95) ? m_focus : anyObject(), chance(60) ? m_place : near(), laterTime(), button));
}

void StreamGenerator::addMousePhrase()
{
    if (chance(70)) {
        addClick();
        if (chance(40))
            add(mouseMove(m_focus, near(), laterTime()));
        if (chance(50))
            addClick();
        return;
    }
    const MouseButton::Value button = anyButton();
    add(mousePress(m_focus, m_place, laterTime(), button));
    addFlickEvent(SyntheticEvent::FlickStarted);
    if (chance(50))
        add(mouseMove(m_focus, near(), laterTime()));
    add(mouseRelease(m_focus, near(), laterTime(), button));
    addFlickEvent(SyntheticEvent::FlickEnded);
    if (!chance(30))
        return;
    // The row dies while the list runs on, so that the end knows of none.
    const SyntheticEvent ended = flickEnded(chance(70) ? m_objects[4] : anyObject(), m_nothing, {3, 200}, laterTime());
    m_stream.steps.back() = {StreamStep::Die, m_time, SyntheticEvent(), m_focus};
    add(ended);
}

void StreamGenerator::addTouchPhrase()
{
    const bool flicks = chance(20);
    const QPoint at = near();
    add(touchBegin(m_focus, {finger(0, at.x(), at.y())}, laterTime()));
    for (std::size_t i = pick(4); i < 2; ++i) {
        add(touchUpdate(m_focus, chance(80) ? std::vector{finger(0, near().x(), near().y())} : anyFingers(),
                        laterTime()));
    }
    if (flicks)
        addFlickEvent(SyntheticEvent::FlickStarted);
    if (chance(20))
        addMouseEvent();
    add(touchEnd(m_focus, chance(70) ? std::vector{finger(0, at.x(), at.y())} : anyFingers(), laterTime()));
    if (flicks)
        addFlickEvent(SyntheticEvent::FlickEnded);
    else if (chance(60))
        addTouchPhrase();
}

void StreamGenerator::addTyping()
{
    for (std::size_t i = pick(4); i < 4; ++i) {
        const QByteArray text = anyText();
        const Modifier::Value modifiers = anyModifiers();
        add(keyPress(m_focus, text, laterTime(), modifiers));
        add(keyRelease(m_focus, text, laterTime(), chance(80) ? modifiers : Modifier::None));
    }
}

void StreamGenerator::addRun()
{
    const std::size_t kind = pick(3);
    for (std::size_t i = pick(4); i < 4; ++i) {
        if (kind == 0)
            add(VantleTest::wheel(m_focus, near(), {0, oneOf({15, -15})}, laterTime()));
        else if (kind == 1)
            add(windowMove(m_focus, {oneOf({0, 5}), 0}, {oneOf({0, 5}), 0}, laterTime()));
        else
            add(windowResize(m_focus, {oneOf({100, 200}), 50}, laterTime()));
        if (kind == 0 && chance(40))
            add(mouseMove(m_focus, near(), laterTime()));
    }
}

} // namespace VantleTest
