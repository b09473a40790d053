#include "support/compressionobjects.h"

#include "hook/class.h"
#include "hook/inspector.h"
#include "wrappers/qt/extensions/qtquickcommon/compression/eventdescription.h"

#include <ostream>

using namespace Vantle;

void PrintTo(const QByteArray &text, std::ostream *out)
{
    *out << '`' << text.toStdString() << '`';
}

namespace VantleTest {

const Class *classNamed(const char *name, const Class *super)
{
    const QString className = QString::fromLatin1(name);
    if (const Class *known = Inspector::self()->classByName(className))
        return known;
    // Classes live as long as the process.
    const Class *type = new Class(className, super);
    Inspector::self()->registerClass(type);
    return type;
}

const Class *itemClass()
{
    return classNamed("QQuickItem");
}

const Class *buttonClass()
{
    return classNamed("TestButton", itemClass());
}

const Class *widgetClass()
{
    return classNamed("TestWidget");
}

TestObject::TestObject(const QByteArray &name, const Class *type, QPoint origin)
    : m_name(name)
    , m_type(type)
    , m_origin(origin)
    , m_native(this)
{
}

TestObject::~TestObject() = default;

bool TestObject::get(void **value) const
{
    const TestObject *const native = m_native && m_native->m_isAlive ? m_native : nullptr;
    *value = const_cast<TestObject *>(native);
    return native != nullptr;
}

void TestObject::setAlive(bool isAlive) const
{
    if (m_native)
        m_native->m_isAlive = isAlive;
}

TestObjectPtr makeObject(const QByteArray &name, const Class *type, QPoint origin)
{
    return TestObjectPtr(new TestObject(name, type, origin));
}

namespace {

QByteArray stepText(const TouchBuilder::Step &step)
{
    QByteArray text = " +" + QByteArray::number(step.time) + '{';
    for (const TouchBuilder::Point &point : step.points) {
        text += ' ' + QByteArray::number(point.id) + ':' + QByteArray::number(point.x) + '/'
            + QByteArray::number(point.y) + " pressure=" + QByteArray::number(point.pressure)
            + " size=" + QByteArray::number(point.size);
    }
    return text + " }";
}

} // namespace

QByteArray Statement::toText() const
{
    QByteArray line = method + ' ' + objectName;
    if (objectClass)
        line += " (" + objectClass->className().toUtf8() + ')';
    if (method == "type")
        line += " \"" + text + '"';
    for (std::size_t i = 0; i < numbers.size(); ++i)
        line += (i % 2 == 0 ? ' ' : '/') + QByteArray::number(numbers[i]);
    if (button)
        line += QByteArray(" ") + MouseButton::name(*button);
    if (gesture) {
        line += " area " + QByteArray::number(gesture->areaWidth()) + 'x' + QByteArray::number(gesture->areaHeight());
        for (const TouchBuilder::Step &step : gesture->steps)
            line += stepText(step);
    }
    if (modifiers)
        line += ' ' + QtWrapper::describeModifiers(*modifiers);
    if (isLong)
        line += " long";
    return line + " @" + QByteArray::number(timestamp);
}

StatementSink::~StatementSink() = default;

void StatementSink::add(Statement statement)
{
    statements.emplace_back(nullptr, QString::number(written.size()), ObjectList());
    written.push_back(std::move(statement));
}

void StatementSink::type(SharedPtr<Object> object, const QByteArray &objectName, const QByteArray &text,
                         quint64 timestamp)
{
    add({.method = "type", .object = object.get(), .objectName = objectName, .text = text, .timestamp = timestamp});
}

void StatementSink::mouseClick(SharedPtr<Object> object, const QByteArray &objectName, const Class *objectClass,
                               qint32 x, qint32 y, MouseButton::Value button, Modifier::Value modifiers,
                               quint64 timestamp, bool longClick)
{
    add({.method = "mouseClick",
         .object = object.get(),
         .objectName = objectName,
         .objectClass = objectClass,
         .numbers = {x, y},
         .button = button,
         .modifiers = modifiers,
         .isLong = longClick,
         .timestamp = timestamp});
}

void StatementSink::mouseDrag(SharedPtr<Object> object, const QByteArray &objectName, qint32 x, qint32 y, qint32 dx,
                              qint32 dy, MouseButton::Value button, Modifier::Value modifiers, quint64 timestamp,
                              bool longDrag)
{
    add({.method = "mouseDrag",
         .object = object.get(),
         .objectName = objectName,
         .numbers = {x, y, dx, dy},
         .button = button,
         .modifiers = modifiers,
         .isLong = longDrag,
         .timestamp = timestamp});
}

void StatementSink::mouseWheel(SharedPtr<Object> object, const QByteArray &objectName, qint32 x, qint32 y,
                               qint32 deltaX, qint32 deltaY, Modifier::Value modifiers, quint64 timestamp)
{
    add({.method = "mouseWheel",
         .object = object.get(),
         .objectName = objectName,
         .numbers = {x, y, deltaX, deltaY},
         .modifiers = modifiers,
         .timestamp = timestamp});
}

void StatementSink::doubleClick(SharedPtr<Object> object, const QByteArray &objectName, const Class *objectClass,
                                qint32 x, qint32 y, MouseButton::Value button, Modifier::Value modifiers,
                                quint64 timestamp)
{
    add({.method = "doubleClick",
         .object = object.get(),
         .objectName = objectName,
         .objectClass = objectClass,
         .numbers = {x, y},
         .button = button,
         .modifiers = modifiers,
         .timestamp = timestamp});
}

void StatementSink::flick(SharedPtr<Object> object, const QByteArray &objectName, qint32 dx, qint32 dy,
                          quint64 timestamp)
{
    add({.method = "flick",
         .object = object.get(),
         .objectName = objectName,
         .numbers = {dx, dy},
         .timestamp = timestamp});
}

void StatementSink::closeWindow(SharedPtr<Object> object, const QByteArray &objectName, quint64 timestamp)
{
    add({.method = "closeWindow", .object = object.get(), .objectName = objectName, .timestamp = timestamp});
}

void StatementSink::moveWindow(SharedPtr<Object> object, const QByteArray &objectName, qint32 dx, qint32 dy,
                               quint64 timestamp)
{
    add({.method = "moveWindow",
         .object = object.get(),
         .objectName = objectName,
         .numbers = {dx, dy},
         .timestamp = timestamp});
}

void StatementSink::setWindowSize(SharedPtr<Object> object, const QByteArray &objectName, qint32 width, qint32 height,
                                  quint64 timestamp)
{
    add({.method = "setWindowSize",
         .object = object.get(),
         .objectName = objectName,
         .numbers = {width, height},
         .timestamp = timestamp});
}

void StatementSink::setWindowState(SharedPtr<Object> object, const QByteArray &objectName, qint32 state,
                                   quint64 timestamp)
{
    add({.method = "setWindowState",
         .object = object.get(),
         .objectName = objectName,
         .numbers = {state},
         .timestamp = timestamp});
}

void StatementSink::tapObject(SharedPtr<Object> object, const QByteArray &objectName, const Class *objectClass,
                              qint32 x, qint32 y, Modifier::Value modifiers, quint64 timestamp)
{
    add({.method = "tapObject",
         .object = object.get(),
         .objectName = objectName,
         .objectClass = objectClass,
         .numbers = {x, y},
         .modifiers = modifiers,
         .timestamp = timestamp});
}

void StatementSink::touchAndDrag(SharedPtr<Object> object, const QByteArray &objectName, qint32 x, qint32 y, qint32 dx,
                                 qint32 dy, Modifier::Value modifiers, qint32 delay, quint64 timestamp)
{
    add({.method = "touchAndDrag",
         .object = object.get(),
         .objectName = objectName,
         .numbers = {x, y, dx, dy, delay},
         .modifiers = modifiers,
         .timestamp = timestamp});
}

void StatementSink::doubleTap(SharedPtr<Object> object, const QByteArray &objectName, const Class *objectClass,
                              qint32 x, qint32 y, Modifier::Value modifiers, quint64 timestamp)
{
    add({.method = "doubleTap",
         .object = object.get(),
         .objectName = objectName,
         .objectClass = objectClass,
         .numbers = {x, y},
         .modifiers = modifiers,
         .timestamp = timestamp});
}

void StatementSink::gesture(SharedPtr<Object> object, const QByteArray &objectName,
                            const TouchBuilder::MultiTouchInfo &info, Modifier::Value modifiers, quint64 timestamp)
{
    add({.method = "gesture",
         .object = object.get(),
         .objectName = objectName,
         .modifiers = modifiers,
         .gesture = info,
         .timestamp = timestamp});
}

} // namespace VantleTest
