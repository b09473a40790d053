#include "wrappers/qt/extensions/qtquickcommon/recording/qtstatementrecorder.h"

#include "hook/class.h"
#include "hook/inspector.h"
#include "wrappers/qt/application.h"
#include "wrappers/qt/bynamefunctions.h"
#include "wrappers/qt/extensions/qtquickcommon/recording/inputconversions.h"
#include "wrappers/qt/qmltypes.h"

#include <QtCore/QDateTime>

#include <algorithm>

namespace Vantle::QtWrapper {

namespace {

SharedPtr<Object> integer(int value)
{
    return Inspector::self()->createInteger(value);
}

SharedPtr<Object> string(const QByteArray &utf8)
{
    return Inspector::self()->createString(utf8.constData());
}

SharedPtr<Object> qtButton(MouseButton::Value button)
{
    return integer(static_cast<int>(buttonValueToQtButton(button)));
}

SharedPtr<Object> qtModifiers(Modifier::Value modifiers)
{
    return integer(static_cast<int>(modifierValueToQtModifiers(modifiers).toInt()));
}

/// Names are held against each other up to their first zero byte.
bool isNameOf(const QByteArray &name, const Class *type)
{
    const QByteArray className = type->className().toUtf8();
    return qstrcmp(className.constData(), name.constData()) == 0
        || qstrcmp(cleanQmlClassName(className).constData(), name.constData()) == 0;
}

bool isNameInChainOf(const QByteArray &name, const Class *type)
{
    for (; type; type = type->super()) {
        if (isNameOf(name, type))
            return true;
    }
    return false;
}

} // namespace

QtStatementRecorder::QtStatementRecorder() = default;
QtStatementRecorder::~QtStatementRecorder() = default;

void QtStatementRecorder::setClassesWithoutCoordinates(const QList<QByteArray> &classNames)
{
    classesWithoutCoordinates = classNames;
}

void QtStatementRecorder::type(SharedPtr<Object> object, const QByteArray &objectName, const QByteArray &text,
                               quint64 timestamp)
{
    appendStatement(typeByNameFn(), object, objectName, {string(text)}, timestamp);
}

void QtStatementRecorder::mouseClick(SharedPtr<Object> object, const QByteArray &objectName, const Class *objectClass,
                                     qint32 x, qint32 y, MouseButton::Value button, Modifier::Value modifiers,
                                     quint64 timestamp, bool longClick)
{
    const ClickMethods methods = longClick ? ClickMethods{longMouseClickOByNameFn(), longMouseClickOBMByNameFn(),
                                                          longMouseClickOCBByNameFn(), longMouseClickOCBMByNameFn()}
                                           : ClickMethods{mouseClickOByNameFn(), mouseClickOBMByNameFn(),
                                                          mouseClickOCBByNameFn(), mouseClickOCBMByNameFn()};
    appendClick(methods, object, objectName, objectClass, x, y, button, modifiers, timestamp);
}

void QtStatementRecorder::mouseDrag(SharedPtr<Object> object, const QByteArray &objectName, qint32 x, qint32 y,
                                    qint32 dx, qint32 dy, MouseButton::Value button, Modifier::Value modifiers,
                                    quint64 timestamp, bool longDrag)
{
    appendStatement(longDrag ? longMouseDragByNameFn() : mouseDragByNameFn(), object, objectName,
                    {integer(x), integer(y), integer(dx), integer(dy), qtModifiers(modifiers), qtButton(button)},
                    timestamp);
}

void QtStatementRecorder::mouseWheel(SharedPtr<Object> object, const QByteArray &objectName, qint32 x, qint32 y,
                                     qint32 deltaX, qint32 deltaY, Modifier::Value modifiers, quint64 timestamp)
{
    appendStatement(mouseWheelByNameFn(), object, objectName,
                    {integer(x), integer(y), integer(deltaX), integer(deltaY), qtModifiers(modifiers)}, timestamp);
}

void QtStatementRecorder::doubleClick(SharedPtr<Object> object, const QByteArray &objectName, const Class *objectClass,
                                      qint32 x, qint32 y, MouseButton::Value button, Modifier::Value modifiers,
                                      quint64 timestamp)
{
    const ClickMethods methods{doubleClickOByNameFn(), doubleClickOBMByNameFn(), doubleClickOCBByNameFn(),
                               doubleClickOCBMByNameFn()};
    appendClick(methods, object, objectName, objectClass, x, y, button, modifiers, timestamp);
}

void QtStatementRecorder::flick(SharedPtr<Object> object, const QByteArray &objectName, qint32 dx, qint32 dy,
                                quint64 timestamp)
{
    appendStatement(flickODByNameFn(), object, objectName, {integer(dx), integer(dy)}, timestamp);
}

void QtStatementRecorder::closeWindow(SharedPtr<Object> object, const QByteArray &objectName, quint64 timestamp)
{
    appendStatement(closeWindowByNameFn(), object, objectName, {}, timestamp);
}

void QtStatementRecorder::moveWindow(SharedPtr<Object> object, const QByteArray &objectName, qint32 dx, qint32 dy,
                                     quint64 timestamp)
{
    appendStatement(moveWindowByNameFn(), object, objectName, {integer(dx), integer(dy)}, timestamp);
}

void QtStatementRecorder::setWindowSize(SharedPtr<Object> object, const QByteArray &objectName, qint32 width,
                                        qint32 height, quint64 timestamp)
{
    appendStatement(setWindowSizeByNameFn(), object, objectName, {integer(width), integer(height)}, timestamp);
}

void QtStatementRecorder::setWindowState(SharedPtr<Object> object, const QByteArray &objectName, qint32 state,
                                         quint64 timestamp)
{
    appendStatement(setWindowStateByNameFn(), object, objectName, {integer(state)}, timestamp);
}

void QtStatementRecorder::tapObject(SharedPtr<Object> object, const QByteArray &objectName, const Class *objectClass,
                                    qint32 x, qint32 y, Modifier::Value modifiers, quint64 timestamp)
{
    const TapMethods methods{tapObjectOByNameFn(), tapObjectOMByNameFn(), tapObjectOCByNameFn(),
                             tapObjectOCMByNameFn()};
    appendTap(methods, object, objectName, objectClass, x, y, modifiers, timestamp);
}

void QtStatementRecorder::touchAndDrag(SharedPtr<Object> object, const QByteArray &objectName, qint32 x, qint32 y,
                                       qint32 dx, qint32 dy, Modifier::Value modifiers, qint32 delay, quint64 timestamp)
{
    ObjectList arguments{integer(x), integer(y), integer(dx), integer(dy)};
    const Method *method = touchAndDragOCDByNameFn();
    if (delay != 0) {
        method = touchAndDragOCDMDByNameFn();
        arguments.push_back(qtModifiers(modifiers));
        arguments.push_back(integer(delay));
    } else if (modifiers != Modifier::None) {
        method = touchAndDragOCDMByNameFn();
        arguments.push_back(qtModifiers(modifiers));
    }
    appendStatement(method, object, objectName, arguments, timestamp);
}

void QtStatementRecorder::doubleTap(SharedPtr<Object> object, const QByteArray &objectName, const Class *objectClass,
                                    qint32 x, qint32 y, Modifier::Value modifiers, quint64 timestamp)
{
    const TapMethods methods{doubleTapOByNameFn(), doubleTapOMByNameFn(), doubleTapOCByNameFn(),
                             doubleTapOCMByNameFn()};
    appendTap(methods, object, objectName, objectClass, x, y, modifiers, timestamp);
}

void QtStatementRecorder::gesture(SharedPtr<Object> object, const QByteArray &objectName,
                                  const TouchBuilder::MultiTouchInfo &info, Modifier::Value, quint64 timestamp)
{
    appendStatement(gestureOGByNameFn(), object, objectName, {string(info.toXml("  ", 1))}, timestamp);
}

void QtStatementRecorder::appendClick(const ClickMethods &methods, const SharedPtr<Object> &object,
                                      const QByteArray &objectName, const Class *objectClass, qint32 x, qint32 y,
                                      MouseButton::Value button, Modifier::Value modifiers, quint64 timestamp)
{
    const bool modified = modifiers != Modifier::None;
    const Method *method = nullptr;
    ObjectList arguments;
    if (!isRecordedWithoutCoordinates(objectClass)) {
        method = modified ? methods.coordinatesAndModifiers : methods.coordinates;
        arguments = {integer(x), integer(y)};
        if (modified)
            arguments.push_back(qtModifiers(modifiers));
        arguments.push_back(qtButton(button));
    } else if (modified || button != MouseButton::LeftButton) {
        method = methods.buttonAndModifiers;
        arguments = {qtModifiers(modifiers), qtButton(button)};
    } else {
        method = methods.plain;
    }
    appendStatement(method, object, objectName, arguments, timestamp);
}

void QtStatementRecorder::appendTap(const TapMethods &methods, const SharedPtr<Object> &object,
                                    const QByteArray &objectName, const Class *objectClass, qint32 x, qint32 y,
                                    Modifier::Value modifiers, quint64 timestamp)
{
    const bool modified = modifiers != Modifier::None;
    const Method *method = nullptr;
    ObjectList arguments;
    if (!isRecordedWithoutCoordinates(objectClass)) {
        method = modified ? methods.coordinatesAndModifiers : methods.coordinates;
        arguments = {integer(x), integer(y)};
    } else {
        method = modified ? methods.modifiers : methods.plain;
    }
    if (modified)
        arguments.push_back(qtModifiers(modifiers));
    appendStatement(method, object, objectName, arguments, timestamp);
}

bool QtStatementRecorder::isRecordedWithoutCoordinates(const Class *objectClass) const
{
    return std::any_of(classesWithoutCoordinates.cbegin(), classesWithoutCoordinates.cend(),
                       [objectClass](const QByteArray &name) { return isNameInChainOf(name, objectClass); });
}

void QtStatementRecorder::appendStatement(const Method *method, const SharedPtr<Object> &object,
                                          const QByteArray &objectName, const ObjectList &arguments, quint64 timestamp)
{
    QString name = QString::fromUtf8(objectName);
    const QString mappedName = Application::self()->mappedNameFor(object, name);
    if (!mappedName.isEmpty())
        name = mappedName;
    EventData statement(method, name, arguments);
    statement.time = QDateTime::fromMSecsSinceEpoch(static_cast<qint64>(timestamp), Qt::LocalTime).time();
    statements.push_back(statement);
}

} // namespace Vantle::QtWrapper
