#include "support/eventscript.h"

#include "hook/class.h"
#include "wrappers/qt/extensions/qtquickcommon/compression/eventdescription.h"

#include <algorithm>
#include <cstdio>
#include <optional>
#include <sstream>

using namespace Vantle;

namespace VantleTest {

namespace {

using Words = EventScript::Words;

[[noreturn]] void fail(const std::string &expected, const std::string &found)
{
    throw EventScriptError("expected " + expected + " but found `" + found + "`");
}

std::string takeWord(Words &words, const std::string &expected)
{
    if (words.empty())
        fail(expected, "the end of the line");
    std::string word = words.front();
    words.erase(words.begin());
    return word;
}

bool takeIf(Words &words, const std::string &word)
{
    if (words.empty() || words.front() != word)
        return false;
    words.erase(words.begin());
    return true;
}

void takeExactly(Words &words, const std::string &word)
{
    if (!takeIf(words, word))
        fail("`" + word + "`", words.empty() ? "the end of the line" : words.front());
}

template<typename T>
T number(const std::string &word)
{
    std::istringstream in(word);
    T value{};
    if (!(in >> value) || in.peek() != std::istringstream::traits_type::eof())
        fail("a number", word);
    return value;
}

/// Two numbers with \p separator between them.
template<typename T>
std::pair<T, T> pair(const std::string &word, char separator)
{
    const std::size_t middle = word.find(separator);
    if (middle == std::string::npos)
        fail(std::string("two numbers with `") + separator + "` between them", word);
    return {number<T>(word.substr(0, middle)), number<T>(word.substr(middle + 1))};
}

QPoint takePoint(Words &words)
{
    const auto [x, y] = pair<int>(takeWord(words, "a point"), '/');
    return {x, y};
}

QByteArray takeText(Words &words)
{
    const std::string word = takeWord(words, "a text in quotes");
    if (word.front() != '"')
        fail("a text in quotes", word);
    return QByteArray::fromStdString(word.substr(1));
}

MouseButton::Value takeButton(Words &words)
{
    const std::string word = takeWord(words, "a button");
    for (int bit = 0; bit <= 128; bit = bit ? bit * 2 : 1) {
        const auto button = static_cast<MouseButton::Value>(bit);
        if (word == MouseButton::name(button))
            return button;
    }
    fail("a button", word);
}

Modifier::Value takeModifiers(Words &words)
{
    if (words.empty() || words.front().front() != '[')
        return Modifier::None;
    const std::string word = takeWord(words, "modifiers");
    Modifier::Value modifiers = Modifier::None;
    std::istringstream names(word.substr(1, word.size() - 2));
    for (std::string name; std::getline(names, name, ',');) {
        Modifier::Value found = Modifier::None;
        for (const qint32 *value = Modifier::values; *value != -1; ++value) {
            if (name == Modifier::name(static_cast<Modifier::Value>(*value)))
                found = static_cast<Modifier::Value>(*value);
        }
        if (found == Modifier::None)
            fail("a modifier", name);
        modifiers |= found;
    }
    return modifiers;
}

/// `ID:X/Y` or, with the extent of the contact, `ID:X/Y~WxH`.
SyntheticEvent::TouchPoint readFinger(const std::string &word)
{
    const std::size_t colon = word.find(':');
    if (colon == std::string::npos)
        fail("a finger", word);
    const std::size_t tilde = word.find('~');
    const auto [x, y] = pair<double>(word.substr(colon + 1, tilde - colon - 1), '/');
    SyntheticEvent::TouchPoint point = finger(number<int>(word.substr(0, colon)), x, y);
    if (tilde != std::string::npos)
        std::tie(point.width, point.height) = pair<double>(word.substr(tilde + 1), 'x');
    return point;
}

std::string text(double value)
{
    return QByteArray::number(value, 'g', 17).toStdString();
}

std::string point(qint32 x, qint32 y)
{
    return std::to_string(x) + '/' + std::to_string(y);
}

std::string quoted(const QByteArray &value)
{
    std::string result = "\"";
    for (const char c : value) {
        if (c == '"' || c == '\\')
            result += '\\';
        result += c;
    }
    return result + '"';
}

std::string writeFinger(const SyntheticEvent::TouchPoint &finger)
{
    std::string result = std::to_string(finger.id) + ':' + text(finger.globalX) + '/' + text(finger.globalY);
    if (finger.width != 0 || finger.height != 0)
        result += '~' + text(finger.width) + 'x' + text(finger.height);
    return result;
}

std::string writeTouch(const SyntheticEvent::TouchEvent &touch)
{
    std::string result;
    for (const SyntheticEvent::TouchPoint &finger : touch.points)
        result += ' ' + writeFinger(finger);
    if (touch.primaryIndex >= touch.points.size())
        result += " primary=none";
    else if (touch.primaryIndex != 0)
        result += " primary=" + std::to_string(touch.primaryIndex);
    return result;
}

} // namespace

Words EventScript::split(const std::string &line)
{
    Words words;
    std::string word;
    bool isQuoted = false;
    for (std::size_t i = 0; i < line.size(); ++i) {
        const char c = line[i];
        if (isQuoted && c == '\\' && i + 1 < line.size()) {
            word += line[++i];
        } else if (c == '"') {
            if (!isQuoted)
                word += c;
            isQuoted = !isQuoted;
        } else if (c == ' ' && !isQuoted) {
            if (!word.empty())
                words.push_back(std::exchange(word, {}));
        } else {
            word += c;
        }
    }
    if (isQuoted)
        fail("a closing quote", "the end of the line");
    if (!word.empty())
        words.push_back(word);
    return words;
}

void EventScript::declareObject(const Words &declaration)
{
    Words words = declaration;
    takeExactly(words, "object");
    const std::string name = takeWord(words, "a name");
    const std::string className = takeWord(words, "a class");
    const Class *super = takeIf(words, "<") ? classNamed(takeWord(words, "a base class").c_str()) : nullptr;
    const QPoint origin = takeIf(words, "at") ? takePoint(words) : QPoint();
    const TestObjectPtr made = makeObject(QByteArray::fromStdString(name), classNamed(className.c_str(), super),
                                          origin);
    if (takeIf(words, "same-as"))
        made->wrapSameAs(object(takeWord(words, "an object")).get());
    if (!words.empty())
        fail("the end of the line", words.front());
    addObject(made);
}

void EventScript::addObject(const TestObjectPtr &object)
{
    m_objects[object->name().toStdString()] = object;
}

TestObjectPtr EventScript::object(const std::string &name) const
{
    const auto found = m_objects.find(name);
    if (found == m_objects.end())
        fail("the name of an object", name);
    return found->second;
}

SyntheticEvent EventScript::read(const Words &line) const
{
    Words words = line;
    const std::string time = takeWord(words, "a time");
    if (time.front() != '@')
        fail("a time", time);
    const std::string kind = takeWord(words, "a kind of event");
    const TestObjectPtr target = object(takeWord(words, "an object"));
    SyntheticEvent event = readKind(kind, target, number<quint64>(time.substr(1)), words);
    event.ready = !takeIf(words, "not-ready");
    if (!words.empty())
        fail("the end of the line", words.front());
    return event;
}

SyntheticEvent EventScript::readKind(const std::string &kind, const TestObjectPtr &target, quint64 time,
                                     Words &words) const
{
    if (kind == "invalid")
        return makeEvent(SyntheticEvent::Invalid, target, time);
    if (kind == "press" || kind == "release") {
        const MouseButton::Value button = takeButton(words);
        const QPoint at = takePoint(words);
        return kind == "press" ? mousePress(target, at, time, button) : mouseRelease(target, at, time, button);
    }
    if (kind == "move")
        return mouseMove(target, takePoint(words), time);
    if (kind == "wheel") {
        const QPoint at = takePoint(words);
        takeExactly(words, "by");
        return wheel(target, at, takePoint(words), time);
    }
    if (kind == "key-press" || kind == "key-release") {
        const QByteArray typed = takeText(words);
        const Modifier::Value modifiers = takeModifiers(words);
        return kind == "key-press" ? keyPress(target, typed, time, modifiers)
                                   : keyRelease(target, typed, time, modifiers);
    }
    if (kind == "commit")
        return inputMethod(target, takeText(words), time);
    if (kind == "close")
        return windowClose(target, time);
    if (kind == "window-move") {
        const QPoint from = takePoint(words);
        takeExactly(words, "to");
        return windowMove(target, from, takePoint(words), time);
    }
    if (kind == "window-resize") {
        const auto [width, height] = pair<int>(takeWord(words, "a size"), 'x');
        return windowResize(target, {width, height}, time);
    }
    if (kind == "window-state")
        return windowState(target, number<int>(takeWord(words, "a state")), time);
    if (kind == "flick-start" || kind == "flick-end") {
        takeExactly(words, "of");
        const TestObjectPtr pressed = object(takeWord(words, "an object"));
        const QPoint content = takePoint(words);
        return kind == "flick-start" ? flickStarted(target, pressed, content, time)
                                     : flickEnded(target, pressed, content, time);
    }
    if (kind == "touch-begin")
        return readTouch(SyntheticEvent::TouchBegin, target, time, words);
    if (kind == "touch-update")
        return readTouch(SyntheticEvent::TouchUpdate, target, time, words);
    if (kind == "touch-end")
        return readTouch(SyntheticEvent::TouchEnd, target, time, words);
    fail("a kind of event", kind);
}

SyntheticEvent EventScript::readTouch(SyntheticEvent::TouchEventType type, const TestObjectPtr &target, quint64 time,
                                      Words &words) const
{
    static const std::string primary = "primary=";
    std::vector<SyntheticEvent::TouchPoint> fingers;
    while (!words.empty() && words.front().find(':') != std::string::npos)
        fingers.push_back(readFinger(takeWord(words, "a finger")));
    SyntheticEvent event = touch(type, target, std::move(fingers), time);
    if (!words.empty() && words.front().starts_with(primary)) {
        const std::string index = takeWord(words, primary).substr(primary.size());
        event.touch.primaryIndex = index == "none" ? noPrimaryFinger : number<quint64>(index);
    }
    return event;
}

std::string EventScript::write(const SyntheticEvent &event) const
{
    const std::string target = event.objectName.toStdString();
    const auto line = [&](const std::string &kind, const std::string &rest = {}) {
        return '@' + std::to_string(event.timestamp) + ' ' + kind + ' ' + target + rest
            + (event.ready ? "" : " not-ready");
    };
    switch (event.type) {
    case SyntheticEvent::Mouse: {
        const std::string button = std::string(" ") + MouseButton::name(event.button);
        const std::string at = ' ' + point(event.globalX, event.globalY);
        if (event.mouseEventType == SyntheticEvent::Move)
            return line("move", at);
        return line(event.mouseEventType == SyntheticEvent::Press ? "press" : "release", button + at);
    }
    case SyntheticEvent::InputMethod: return line("commit", ' ' + quoted(event.inputMethodText));
    case SyntheticEvent::Key: {
        std::string rest = ' ' + quoted(event.text);
        if (event.modifiers != Modifier::None)
            rest += ' ' + QtWrapper::describeModifiers(event.modifiers).toStdString();
        return line(event.keyEventType == SyntheticEvent::KeyPress ? "key-press" : "key-release", rest);
    }
    case SyntheticEvent::Wheel: {
        const QPoint origin = static_cast<const TestObject *>(event.object.get())->origin();
        return line("wheel",
                    ' ' + point(event.x + origin.x(), event.y + origin.y()) + " by "
                        + point(event.wheelDeltaX, event.wheelDeltaY));
    }
    case SyntheticEvent::WindowClose: return line("close");
    case SyntheticEvent::WindowMove:
        return line("window-move",
                    ' ' + point(event.oldWindowX, event.oldWindowY) + " to " + point(event.windowX, event.windowY));
    case SyntheticEvent::WindowResize:
        return line("window-resize",
                    ' ' + std::to_string(event.windowWidth) + 'x' + std::to_string(event.windowHeight));
    case SyntheticEvent::WindowStateChange: return line("window-state", ' ' + std::to_string(event.windowState));
    case SyntheticEvent::Flick: {
        const auto *pressed = static_cast<const TestObject *>(event.flickObject.get());
        return line(event.flickState == SyntheticEvent::FlickStarted ? "flick-start" : "flick-end",
                    " of " + pressed->name().toStdString() + ' ' + point(event.contentX, event.contentY));
    }
    case SyntheticEvent::Touch: {
        static constexpr const char *kinds[] = {"touch-begin", "touch-update", "touch-end"};
        return line(kinds[event.touch.touchEventType], writeTouch(event.touch));
    }
    case SyntheticEvent::Invalid: break;
    }
    return line("invalid");
}

std::string EventScript::writeDeclaration(const TestObject &object)
{
    std::string line = "object " + object.name().toStdString() + ' ' + object.objectClass()->className().toStdString();
    if (const Class *super = object.objectClass()->super())
        line += " < " + super->className().toStdString();
    if (!object.origin().isNull())
        line += " at " + point(object.origin().x(), object.origin().y());
    return line;
}

} // namespace VantleTest
