#include "agent/scriptcall.h"

#include "agent/objecttree.h"
#include "hook/delegates.h"
#include "hook/inspector.h"
#include "protocol/objectmessages.h"
#include "wrappers/qt/application.h"
#include "wrappers/qt/bynamefunctions.h"
#include "wrappers/qt/extensions/qtquickcommon/identity/hittesting.h"
#include "wrappers/qt/functions/inputplayer.h"
#include "wrappers/qt/wrapping.h"

#include <QtCore/QTimer>
#include <QtGui/QWindow>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>

#include <algorithm>

namespace Vantle::Agent {

namespace {

const Class *textClass()
{
    return Inspector::self()->classByName(QStringLiteral("QString"));
}

QString textOf(const SharedPtr<Object> &object)
{
    void *text = nullptr;
    return object && object->objectClass() == textClass() && object->get(&text) ? *static_cast<QString *>(text)
                                                                                : QString();
}

std::optional<int> numberOf(const SharedPtr<Object> &object)
{
    void *number = nullptr;
    const Class *const integer = Inspector::self()->classByName(QStringLiteral("int"));
    if (!object || object->objectClass() != integer || !object->get(&number))
        return std::nullopt;
    return *static_cast<int *>(number);
}

bool isOneOf(const QString &function, std::initializer_list<const char *> names)
{
    return std::any_of(names.begin(), names.end(), [&](const char *name) { return function == QLatin1String(name); });
}

QQuickItem *itemOf(const SharedPtr<Object> &object)
{
    return qobject_cast<QQuickItem *>(QtWrapper::nativeQObject(object));
}

QString describe(QPoint point)
{
    return QStringLiteral("(%1, %2)").arg(point.x()).arg(point.y());
}

/// The item that a user hits at \p point of \p window; null if that is empty there.
QQuickItem *itemAt(const QQuickWindow *window, QPointF point)
{
    QQuickItem *const hit = QtWrapper::recursiveQuickItemAt(window->contentItem(), point);
    return hit != window->contentItem() ? hit : nullptr;
}

} // namespace

ScriptCall::ScriptCall(const Request &request, const TargetFinder *finder, const Protocol::Responder &responder,
                       std::function<QJsonObject(const SharedPtr<Object> &, QWindow *, QPoint)> answer)
    : m_request(request)
    , m_finder(finder)
    , m_responder(responder)
    , m_answer(std::move(answer))
{
    study();
}

ScriptCall::~ScriptCall()
{
    // All was done, and has ended the program, as closing its last window does.
    if (m_isCarriedOut && !m_responder.isOver() && QtWrapper::InputPlayer::self()->isPlayed())
        m_responder.respond(QJsonObject{{QStringLiteral("result"), QJsonValue()}});
}

// What the signature tells about the call. One that fits no overload waits for
// nothing: it fails with the Inspector's own words.
void ScriptCall::study()
{
    const GlobalMethod *const method = Inspector::self()->findGlobalMethod(m_request.function, m_request.arguments);
    if (!method || method->signature().arguments().isEmpty())
        return;
    const QList<Argument> &places = method->signature().arguments();
    const bool isByName = places.first().name() == QLatin1String("objectName") && places.first().type() == textClass();
    if (isByName)
        m_target.name = textOf(m_request.arguments.at(0));
    else if (places.first().passing() != Argument::ByPointer)
        return;

    if (isOneOf(m_request.function, {"closeWindow", "moveWindow", "setWindowSize", "setWindowState", "grabWidget"}))
        m_needs = Needs::Existence;
    else if (isOneOf(m_request.function, {"type", "nativeType"}))
        m_needs = Needs::Readiness;
    else
        m_needs = Needs::FreePoint;

    std::optional<int> x;
    std::optional<int> y;
    for (qsizetype i = 1; i < places.size(); ++i) {
        const SharedPtr<Object> argument = m_request.arguments.at(static_cast<std::size_t>(i));
        if (places.at(i).name() == QLatin1String("x"))
            x = numberOf(argument);
        else if (places.at(i).name() == QLatin1String("y"))
            y = numberOf(argument);
    }
    if (x && y)
        m_pointInObject = QPoint(*x, *y);
}

SharedPtr<Object> ScriptCall::object() const
{
    if (!m_target.name.isEmpty())
        return m_finder->look(m_target);
    const SharedPtr<Object> object = m_request.arguments.at(0);
    return object && !object->isNull() ? object : SharedPtr<Object>();
}

bool ScriptCall::tryNow(bool isLast)
{
    if (m_responder.isOver())
        return true;
    if (m_needs == Needs::Nothing) {
        carryOut();
        return true;
    }
    const SharedPtr<Object> object = this->object();
    if (!object) {
        const bool isGone = m_target.name.isEmpty();
        if (isGone)
            m_responder.fail(Protocol::ObjectGone, QStringLiteral("the object is gone"));
        else if (isLast) {
            const Protocol::Error error = m_finder->failure(m_target);
            m_responder.fail(error.code, error.message, error.data);
        }
        return isGone || isLast;
    }
    const std::optional<Obstacle> problem = obstacle(object);
    if (problem && isLast)
        failWith(*problem);
    if (problem)
        return isLast;
    carryOut();
    return true;
}

std::optional<ScriptCall::Obstacle> ScriptCall::obstacle(const SharedPtr<Object> &object)
{
    choosePoint(object);
    if (m_needs == Needs::Existence)
        return std::nullopt;
    if (const QString reason = notReadyReason(object); !reason.isEmpty()) {
        m_stillness.forget();
        return Obstacle{reason};
    }
    if (const auto moving = motion(object))
        return moving;
    return m_needs == Needs::FreePoint ? cover(object) : std::nullopt;
}

void ScriptCall::choosePoint(const SharedPtr<Object> &object)
{
    // The input that is played goes to the same points.
    const QQuickItem *const item = itemOf(object);
    QPointF point = QPointF(screenRect(object).center());
    if (m_pointInObject)
        point = QPointF(*m_pointInObject) + QPointF(0.5, 0.5);
    else if (item)
        point = item->mapFromGlobal(point);
    else if (const auto *const window = qobject_cast<QWindow *>(QtWrapper::nativeQObject(object)))
        point = window->mapFromGlobal(point);
    const GeometryDelegate *const delegate = DelegateFactory::self()->geometryDelegate(object->objectClass());
    const GeometryDelegate::WindowPoint shown = delegate ? delegate->mapToWindow(object, point)
                                                         : GeometryDelegate::WindowPoint{};
    m_window = qobject_cast<QWindow *>(QtWrapper::nativeQObject(shown.window));
    m_point = QPoint(qFloor(shown.point.x()), qFloor(shown.point.y()));
    if (item)
        m_scenePoint = item->mapToScene(point);
}

std::optional<ScriptCall::Obstacle> ScriptCall::motion(const SharedPtr<Object> &object)
{
    if (m_stillness.isAtRest(object))
        return std::nullopt;
    QQuickItem *const carrier = m_stillness.carrier();
    if (!carrier || carrier == itemOf(object))
        return Obstacle{QStringLiteral("it is still moving")};
    return Obstacle{QStringLiteral("%1, which holds it, is still moving"), QtWrapper::wrapAndRegisterQObject(carrier)};
}

std::optional<ScriptCall::Obstacle> ScriptCall::cover(const SharedPtr<Object> &object)
{
    const QQuickItem *const item = itemOf(object);
    const QQuickWindow *const window = item ? item->window() : nullptr;
    if (!window)
        return std::nullopt;
    const QString where = m_pointInObject ? QStringLiteral("its point %1").arg(describe(*m_pointInObject))
                                          : QStringLiteral("its middle");
    if (!QRectF(QPointF(), QSizeF(window->size())).contains(m_scenePoint))
        return Obstacle{QStringLiteral("%1 lies outside of the window").arg(where)};
    QQuickItem *const hit = itemAt(window, m_scenePoint);
    // Finding out may have run scripts.
    if (itemOf(object) != item)
        return Obstacle{QStringLiteral("the item does not exist any more")};
    if (hit == item || (hit && item->isAncestorOf(hit)))
        return std::nullopt;
    if (!hit)
        return Obstacle{QStringLiteral("it can't be hit at %1").arg(where)};
    return Obstacle{where + QStringLiteral(" is covered by %1"), QtWrapper::wrapAndRegisterQObject(hit), true};
}

void ScriptCall::failWith(const Obstacle &obstacle)
{
    const QString name = m_target.name.isEmpty() ? m_request.arguments.at(0)->scriptName() : m_target.name;
    QString reason = obstacle.reason;
    QString other;
    if (obstacle.other) {
        const QString className = obstacle.other->className();
        other = obstacle.other->scriptName();
        reason = reason.arg(other.isEmpty() ? className : other);
    }
    m_responder.fail(Protocol::ObjectNotReady,
                     QStringLiteral("cannot call %1 on %2: %3").arg(m_request.function, name, reason),
                     Protocol::NotReady{name, reason, obstacle.isCover ? other : QString()}.toJson());
}

/// A flick moves the content of its flickable without any input, so that
/// nobody who watches the input would record it.
std::optional<EventData> ScriptCall::unseenStatement() const
{
    constexpr std::size_t objectAndDistances = 3;
    if (m_request.function != QLatin1String("flick") || m_request.arguments.size() != objectAndDistances)
        return std::nullopt;
    const SharedPtr<Object> flickable = object();
    if (!flickable)
        return std::nullopt;
    EventData statement(QtWrapper::flickODByNameFn(), flickable->scriptName(),
                        {m_request.arguments.at(1), m_request.arguments.at(2)});
    statement.time = QTime::currentTime();
    return statement;
}

void ScriptCall::carryOut()
{
    m_stillness.forget();
    Inspector *const inspector = Inspector::self();
    const QPointer<ScriptCall> self(this);
    const std::optional<EventData> unseen = unseenStatement();
    if (unseen)
        QtWrapper::InputPlayer::announceAction();
    if (!self)
        return;
    const SharedPtr<Object> result = inspector->callGlobalMethod(m_request.function, m_request.arguments);
    const QString error = inspector->takeError();
    // The function may have run an event loop, to the end of the connection.
    if (!self)
        return;
    if (!error.isEmpty()) {
        m_responder.fail(Protocol::FunctionFailed, error);
        return;
    }
    if (unseen)
        QtWrapper::Application::self()->recordEvent(*unseen);
    m_isCarriedOut = true;
    // The function has only handed its input over.
    QtWrapper::InputPlayer::self()->whenIdle([self, result](const QString &problem) {
        if (self)
            self->inputDelivered(result, problem);
    });
}

void ScriptCall::inputDelivered(const SharedPtr<Object> &result, const QString &problem)
{
    if (problem.isEmpty()) {
        waitUntilDigested(result);
        return;
    }
    m_responder.fail(Protocol::FunctionFailed, problem);
    deleteLater();
}

void ScriptCall::waitUntilDigested(const SharedPtr<Object> &result)
{
    // Comes when nothing else is waiting in the event loop.
    QTimer::singleShot(0, this, [this, result] {
        m_responder.respond(m_answer(result, m_window, m_point));
        deleteLater();
    });
}

} // namespace Vantle::Agent
