#include "agent/scriptcall.h"

#include "agent/objecttree.h"
#include "hook/delegates.h"
#include "hook/inspector.h"
#include "protocol/objectmessages.h"
#include "wrappers/qt/wrapping.h"

#include <QtCore/QTimer>
#include <QtGui/QWindow>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>

#include <algorithm>

namespace Vantle::Agent {

namespace {

// A window that is not drawn doesn't move its items by animations either; what
// moves them otherwise has had its time then.
constexpr qint64 restWithoutFrames = 250;

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

QWindow *windowOf(const SharedPtr<Object> &object)
{
    if (const QQuickItem *const item = itemOf(object))
        return item->window();
    return qobject_cast<QWindow *>(QtWrapper::nativeQObject(object));
}

QString describe(QPoint point)
{
    return QStringLiteral("(%1, %2)").arg(point.x()).arg(point.y());
}

/// The object that is hit at \p point of \p window.
SharedPtr<Object> objectAt(QWindow *window, QPointF point)
{
    const SharedPtr<Object> object = QtWrapper::wrapAndRegisterQObject(window);
    const GeometryDelegate *const delegate = DelegateFactory::self()->geometryDelegate(object->objectClass());
    const QPoint pixel(qFloor(point.x()), qFloor(point.y()));
    return delegate ? delegate->childAt(object, pixel.x(), pixel.y()) : nullptr;
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

ScriptCall::~ScriptCall() = default;

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
        m_lastRect.reset();
        return Obstacle{reason, QString()};
    }
    if (const auto moving = motion(object))
        return moving;
    return m_needs == Needs::FreePoint ? cover(object) : std::nullopt;
}

void ScriptCall::choosePoint(const SharedPtr<Object> &object)
{
    m_window = windowOf(object);
    if (const QQuickItem *const item = itemOf(object)) {
        const QPointF point = m_pointInObject ? QPointF(*m_pointInObject)
                                              : QPointF(item->width() / 2, item->height() / 2);
        const QPointF scene = item->mapToScene(point);
        m_point = QPoint(qFloor(scene.x()), qFloor(scene.y()));
    } else if (m_window) {
        m_point = m_pointInObject.value_or(QPoint(m_window->width() / 2, m_window->height() / 2));
    }
}

// Where it was when it was last looked at, at least a frame ago.
std::optional<ScriptCall::Obstacle> ScriptCall::motion(const SharedPtr<Object> &object)
{
    const QRect rect = screenRect(object);
    QObject *const native = QtWrapper::nativeQObject(object);
    const bool isSame = m_lastRect == rect && m_lastObject == native;
    if (isSame && (m_hasDrawn || m_sinceLastLook.elapsed() >= restWithoutFrames))
        return std::nullopt;
    if (!isSame) {
        m_lastRect = rect;
        m_lastObject = native;
        m_hasDrawn = false;
        m_sinceLastLook.start();
    }
    if (auto *const window = qobject_cast<QQuickWindow *>(m_window.data())) {
        if (m_watchedWindow != window) {
            if (m_watchedWindow)
                m_watchedWindow->disconnect(this);
            m_watchedWindow = window;
            connect(window, &QQuickWindow::afterAnimating, this, [this] { m_hasDrawn = true; });
        }
        window->update();
    }
    return Obstacle{QStringLiteral("it is still moving"), QString()};
}

std::optional<ScriptCall::Obstacle> ScriptCall::cover(const SharedPtr<Object> &object)
{
    const QQuickItem *const item = itemOf(object);
    if (!item || !m_window)
        return std::nullopt;
    const SharedPtr<Object> hit = objectAt(m_window, m_point);
    // Finding out may have run scripts.
    const QQuickItem *const hitItem = itemOf(hit);
    if (!itemOf(object))
        return Obstacle{QStringLiteral("the item does not exist any more"), QString()};
    if (hitItem && (hitItem == item || item->isAncestorOf(hitItem)))
        return std::nullopt;
    const QString where = m_pointInObject ? QStringLiteral("its point %1").arg(describe(*m_pointInObject))
                                          : QStringLiteral("its middle");
    if (!QRect(QPoint(0, 0), m_window->size()).contains(m_point))
        return Obstacle{QStringLiteral("%1 lies outside of the window").arg(where), QString()};
    if (!hitItem)
        return Obstacle{QStringLiteral("it can't be hit at %1").arg(where), QString()};
    const QString name = hit->scriptName();
    return Obstacle{QStringLiteral("%1 is covered by %2").arg(where, name.isEmpty() ? hit->className() : name), name};
}

void ScriptCall::failWith(const Obstacle &obstacle)
{
    const QString name = m_target.name.isEmpty() ? m_request.arguments.at(0)->scriptName() : m_target.name;
    m_responder.fail(Protocol::ObjectNotReady,
                     QStringLiteral("cannot call %1 on %2: %3").arg(m_request.function, name, obstacle.reason),
                     Protocol::NotReady{name, obstacle.reason, obstacle.coveredBy}.toJson());
}

void ScriptCall::carryOut()
{
    Inspector *const inspector = Inspector::self();
    const QPointer<ScriptCall> self(this);
    const SharedPtr<Object> result = inspector->callGlobalMethod(m_request.function, m_request.arguments);
    const QString error = inspector->takeError();
    // The function may have run an event loop, to the end of the connection.
    if (!self)
        return;
    if (error.isEmpty())
        waitUntilDigested(result);
    else
        m_responder.fail(Protocol::FunctionFailed, error);
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
