#include "agent/recording/hoststatements.h"

#include "hook/class.h"
#include "hook/eventdata.h"
#include "hook/inspector.h"
#include "hook/method.h"
#include "wrappers/qt/application.h"
#include "wrappers/qt/bynamefunctions.h"
#include "wrappers/qt/extensions/qtquickcommon/compression/syntheticevent.h"
#include "wrappers/qt/extensions/qtquickcommon/recording/inputconversions.h"
#include "wrappers/qt/wrapping.h"

#include <QtCore/QDateTime>
#include <QtQuick/private/qquickflickable_p.h>

namespace Vantle::Agent::HostStatements {

namespace {

using QtWrapper::SyntheticEvent;

SharedPtr<Object> number(int value)
{
    return Inspector::self()->createInteger(value);
}

SharedPtr<Object> button(MouseButton::Value value)
{
    return number(static_cast<int>(QtWrapper::buttonValueToQtButton(value)));
}

SharedPtr<Object> text(const QByteArray &value)
{
    return Inspector::self()->createString(value.constData());
}

void record(const Method *method, const QByteArray &objectName, const ObjectList &arguments, quint64 timestamp)
{
    QtWrapper::Application *const application = QtWrapper::Application::self();
    const QString name = QString::fromUtf8(objectName);
    const QString alias = application->mappedNameFor(nullptr, name);
    EventData statement(method, alias.isEmpty() ? name : alias, arguments);
    statement.time = QDateTime::fromMSecsSinceEpoch(static_cast<qint64>(timestamp)).time();
    application->recordEvent(statement);
}

/// Scripts have this function from the tool, so it is only told.
const Method *snoozeMethod()
{
    static const GlobalMethod *const method = [] {
        const Class *const number = Inspector::self()->classByName(QStringLiteral("double"));
        const Class *const string = Inspector::self()->classByName(QStringLiteral("QString"));
        return new GlobalMethod(nullptr, Argument(nullptr, 0, 0), QStringLiteral("snooze"),
                                Signature({Argument(QStringLiteral("objectName"), string, 0, 0),
                                           Argument(QStringLiteral("seconds"), number, 0, 0)}));
    }();
    return method;
}

/// Where the content comes to rest that is at \p position: a flickable lets it
/// overshoot for a moment.
int restingPlace(qreal position, qreal origin, qreal content, qreal view)
{
    return qRound(qBound(origin, position, qMax(origin, origin + content - view)));
}

} // namespace

void mouseMove(const SyntheticEvent &place)
{
    record(QtWrapper::mouseMoveByNameFn(), place.objectName, {number(place.x), number(place.y)}, place.timestamp);
}

void mousePress(const SyntheticEvent &press)
{
    record(QtWrapper::mousePressOCBByNameFn(), press.objectName,
           {number(press.x), number(press.y), button(press.button)}, press.timestamp);
}

void mouseRelease(const SyntheticEvent &press, const SyntheticEvent &release)
{
    record(QtWrapper::mouseReleaseOCBByNameFn(), press.objectName,
           {number(press.x + release.globalX - press.globalX), number(press.y + release.globalY - press.globalY),
            button(press.button)},
           release.timestamp);
}

void snooze(std::chrono::milliseconds time, const SyntheticEvent &record_)
{
    // Seconds, to a tenth, as a user would write them.
    const double seconds = static_cast<double>((time.count() + 50) / 100) / 10.0;
    record(snoozeMethod(), QByteArray(), {Inspector::self()->createDouble(seconds)}, record_.timestamp);
}

EventData withContentPosition(const EventData &statement, const SharedPtr<Object> &object)
{
    const auto *const flickable = qobject_cast<QQuickFlickable *>(QtWrapper::nativeQObject(object));
    if (!flickable || statement.method() != QtWrapper::mouseWheelByNameFn())
        return statement;
    ObjectList arguments = statement.arguments();
    const QQuickFlickable &view = *flickable;
    arguments.push_back(number(restingPlace(view.contentX(), view.originX() - view.leftMargin(),
                                            view.contentWidth() + view.leftMargin() + view.rightMargin(),
                                            view.width())));
    arguments.push_back(number(restingPlace(view.contentY(), view.originY() - view.topMargin(),
                                            view.contentHeight() + view.topMargin() + view.bottomMargin(),
                                            view.height())));
    EventData complete(QtWrapper::mouseWheelToByNameFn(), statement.objectName(), arguments);
    complete.time = statement.time;
    return complete;
}

void keyPress(const SyntheticEvent &focus, const char *key)
{
    record(QtWrapper::keyPressByNameFn(), focus.objectName, {text(key)}, focus.timestamp);
}

void keyRelease(const SyntheticEvent &focus, const char *key)
{
    record(QtWrapper::keyReleaseByNameFn(), focus.objectName, {text(key)}, focus.timestamp);
}

void dragAndDrop(const SyntheticEvent &press, const SyntheticEvent &target)
{
    record(QtWrapper::dragAndDropOCTCByNameFn(), press.objectName,
           {number(press.x), number(press.y), text(target.objectName), number(target.x), number(target.y)},
           press.timestamp);
}

} // namespace Vantle::Agent::HostStatements
