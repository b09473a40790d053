#include "wrappers/qt/extensions/qtquickcommon/compression/eventdescription.h"

#include "hook/class.h"
#include "wrappers/qt/extensions/qtquickcommon/diagnostics/logging.h"

#include <iomanip>
#include <locale>
#include <ostream>
#include <sstream>

namespace Vantle::QtWrapper {

namespace {

/// Streams a number in hexadecimal, without leading zeros, and leaves the stream decimal.
struct Hex
{
    qint32 value;
};

std::ostream &operator<<(std::ostream &out, Hex hex)
{
    return out << "0x" << std::hex << static_cast<quint32>(hex.value) << std::dec;
}

std::ostream &operator<<(std::ostream &out, const QByteArray &text)
{
    return out.write(text.constData(), text.size());
}

void describeMouse(std::ostream &out, const SyntheticEvent &event)
{
    const char *button = MouseButton::name(event.button);
    out << "mouse event: (";
    switch (event.mouseEventType) {
    case SyntheticEvent::Press: out << "press, " << (button ? button : ""); break;
    case SyntheticEvent::Move: out << "move"; break;
    case SyntheticEvent::Release: out << "release, " << (button ? button : ""); break;
    }
    out << ", " << event.globalX << '/' << event.globalY << ')';
}

void describeKey(std::ostream &out, const SyntheticEvent &event)
{
    out << "keyboard event: (" << (event.keyEventType == SyntheticEvent::KeyPress ? "press, " : "release, ")
        << "key=" << Hex{event.key} << ", modifiers=" << Hex{event.modifiers} << ", text=" << event.text << ')';
}

void describeFlick(std::ostream &out, const SyntheticEvent &event)
{
    out << "flick event: (" << (event.flickState == SyntheticEvent::FlickStarted ? "flick started" : "flick ended")
        << ", contentPos=" << event.contentX << '/' << event.contentY << ')';
}

void describeTouch(std::ostream &out, const SyntheticEvent::TouchEvent &touch)
{
    out << "touch event: (";
    switch (touch.touchEventType) {
    case SyntheticEvent::TouchBegin: out << "begin"; break;
    case SyntheticEvent::TouchUpdate: out << "update"; break;
    case SyntheticEvent::TouchEnd: out << "end"; break;
    }
    out << ", points={";
    for (const SyntheticEvent::TouchPoint &point : touch.points)
        out << point.id << ':' << point.globalX << '/' << point.globalY << ", ";
    out << "} primary=";
    if (touch.primaryIndex < touch.points.size())
        out << touch.points[touch.primaryIndex].id;
    else
        out << "NONE";
    out << ')';
}

void describeKind(std::ostream &out, const SyntheticEvent &event)
{
    switch (event.type) {
    case SyntheticEvent::Invalid: out << "invalid event"; break;
    case SyntheticEvent::Mouse: describeMouse(out, event); break;
    case SyntheticEvent::InputMethod: out << "input method event: (" << event.inputMethodText << ')'; break;
    case SyntheticEvent::Key: describeKey(out, event); break;
    case SyntheticEvent::Wheel:
        // The degree sign in UTF-8, whatever the encoding of this file.
        out << "mouse wheel event: (" << event.wheelDeltaX << "\xC2\xB0/" << event.wheelDeltaY << "\xC2\xB0)";
        break;
    case SyntheticEvent::WindowClose: out << "window close event"; break;
    case SyntheticEvent::WindowMove:
        out << "window move event: (" << event.windowX << '/' << event.windowY << ')';
        break;
    case SyntheticEvent::WindowResize:
        out << "window resize event: (" << event.windowWidth << '/' << event.windowHeight << ')';
        break;
    case SyntheticEvent::WindowStateChange: out << "window state change event: (" << event.windowState << ')'; break;
    case SyntheticEvent::Flick: describeFlick(out, event); break;
    case SyntheticEvent::Touch: describeTouch(out, event.touch); break;
    }
}

} // namespace

QByteArray describeEvent(const SyntheticEvent &event)
{
    std::ostringstream out;
    // The program under test may have set a global locale that groups digits.
    out.imbue(std::locale::classic());
    out << std::fixed << std::setprecision(2);
    out << '@' << event.timestamp << ' ';
    describeKind(out, event);
    const QByteArray className = event.objectClass ? event.objectClass->className().toUtf8() : QByteArray();
    out << " on object of type '" << className << "' which is " << (event.ready ? "ready" : "not ready");
    return QByteArray::fromStdString(out.str());
}

QByteArray describeModifiers(Modifier::Value modifiers)
{
    if (modifiers == Modifier::None)
        return QByteArrayLiteral("None");
    QByteArray names;
    for (const qint32 *value = Modifier::values; *value != -1; ++value) {
        const auto bit = static_cast<Modifier::Value>(*value);
        if ((modifiers & bit) == Modifier::None)
            continue;
        if (!names.isEmpty())
            names += ',';
        names += Modifier::name(bit);
    }
    return '[' + names + ']';
}

void dumpQueue(const char *name, const std::list<SyntheticEvent> &queue, Modifier::Value initialModifiers)
{
    QtQuickCommon::logInfo("%s: Considering %d events (initial modifiers = '%s'):", name,
                           static_cast<int>(queue.size()), describeModifiers(initialModifiers).constData());
    dumpEvents(queue, name);
}

void dumpEvents(const std::list<SyntheticEvent> &queue, const char *name)
{
    int index = 0;
    for (const SyntheticEvent &event : queue)
        QtQuickCommon::logInfo("%s: #%d: %s", name, index++, describeEvent(event).constData());
}

} // namespace Vantle::QtWrapper
