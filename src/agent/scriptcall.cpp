#include "agent/scriptcall.h"

#include "hook/inspector.h"
#include "protocol/objectmessages.h"
#include "wrappers/qt/application.h"
#include "wrappers/qt/bynamefunctions.h"
#include "wrappers/qt/extensions/qtquick/quickscrolling.h"
#include "wrappers/qt/functions/inputplayer.h"
#include "wrappers/qt/wrapping.h"

#include <QtCore/QPointer>

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

CallTarget::Needs needsOf(const QString &function)
{
    // The pointer may let go anywhere, and a key goes up wherever the focus is.
    if (isOneOf(function, {"grabWidget", "mouseRelease", "keyRelease", "scrollTo"}))
        return CallTarget::Needs::Existence;
    if (isOneOf(function, {"closeWindow", "moveWindow", "setWindowSize", "setWindowState"}))
        return CallTarget::Needs::Visibility;
    // A flick moves its object by itself, without any input to a point of it.
    return isOneOf(function, {"type", "typeText", "keyPress", "mouseMove", "flick"}) ? CallTarget::Needs::Readiness
                                                                                     : CallTarget::Needs::FreePoint;
}

/// Whether the parameter takes an object that the call acts on, or its name.
bool isTarget(const Argument &parameter)
{
    const bool isName = parameter.type() == textClass()
        && (parameter.name() == QLatin1String("objectName") || parameter.name() == QLatin1String("targetName"));
    return isName || parameter.passing() == Argument::ByPointer;
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
    if (m_responder.isOver())
        return;
    // All was done, and has ended the program, as closing its last window does.
    if (m_hasEndedProgram)
        m_responder.respond(QJsonObject{{QStringLiteral("result"), QJsonValue()}});
    else if (!QCoreApplication::instance())
        m_responder.fail(Protocol::ProgramEnds, QStringLiteral("the program has ended before it was done"));
}

// What the signature tells about the call. One that fits no overload waits for
// nothing: it fails with the Inspector's own words.
void ScriptCall::study()
{
    const GlobalMethod *const method = Inspector::self()->findGlobalMethod(m_request.function, m_request.arguments);
    if (!method || method->signature().arguments().isEmpty())
        return;
    const QList<Argument> &parameters = method->signature().arguments();
    std::optional<int> x;
    std::optional<int> y;
    CallTarget::Aim aim;
    std::optional<qsizetype> second;
    for (qsizetype i = 1; i < parameters.size(); ++i) {
        const std::optional<int> number = numberOf(m_request.arguments.at(static_cast<std::size_t>(i)));
        if (parameters.at(i).name() == QLatin1String("x"))
            x = number;
        else if (parameters.at(i).name() == QLatin1String("y"))
            y = number;
        else if (parameters.at(i).name() == QLatin1String("button") && number)
            aim.button = static_cast<Qt::MouseButton>(*number);
        else if (isTarget(parameters.at(i)))
            second = i;
    }
    if (x && y)
        aim.point = QPoint(*x, *y);
    if (isTarget(parameters.first()))
        addTarget(0, needsOf(m_request.function), aim);
    // What is dropped on takes no press, so it needs not be free for one.
    if (second)
        addTarget(*second, CallTarget::Needs::Readiness, {});
}

void ScriptCall::addTarget(qsizetype argument, CallTarget::Needs needs, const CallTarget::Aim &aim)
{
    const SharedPtr<Object> value = m_request.arguments.at(static_cast<std::size_t>(argument));
    m_targets.push_back(std::make_shared<CallTarget>(textOf(value), value, needs, aim));
}

bool ScriptCall::tryNow(bool isLast)
{
    const QPointer<ScriptCall> self(this);
    for (std::size_t i = 0; !m_responder.isOver() && i < m_targets.size(); ++i) {
        const bool isFreeNow = isFree(m_targets.at(i), isLast);
        if (!self)
            return true;
        if (!isFreeNow)
            return isLast || m_responder.isOver();
    }
    if (!m_responder.isOver())
        carryOut();
    return true;
}

/// Whether nothing is in the way of acting on \p target. If this \p isLast, or
/// there is nothing to be waited for, the answer says what is.
bool ScriptCall::isFree(std::shared_ptr<CallTarget> target, bool isLast)
{
    // What is looked at may run an event loop, and this call may be gone behind it.
    const QPointer<ScriptCall> self(this);
    SharedPtr<Object> object = target->lookWith(*m_finder);
    if (!self)
        return false;
    // An entry that its view has not made yet is nowhere else to be found.
    if (!object && m_request.function == QLatin1String("scrollTo") && target->isByName()) {
        object = QtWrapper::revealEntry(target->target().name);
        if (!self)
            return false;
    }
    if (!object && !target->isByName()) {
        m_responder.fail(Protocol::ObjectGone, QStringLiteral("the object is gone"));
    } else if (!object && (isLast || !TargetFinder::mayAppear(target->target()))) {
        const Protocol::Error error = m_finder->failure(target->target());
        m_responder.fail(error.code, error.message, error.data);
    }
    if (!object)
        return false;
    const std::optional<Obstacle> obstacle = target->obstacle(object);
    if (self && obstacle && isLast)
        failWith(*target, *obstacle);
    return self && !obstacle;
}

void ScriptCall::failWith(const CallTarget &target, const Obstacle &obstacle)
{
    const QString name = target.nameInMessages();
    const QString reason = obstacle.inWords();
    m_responder.fail(Protocol::ObjectNotReady,
                     QStringLiteral("cannot call %1 on %2: %3").arg(m_request.function, name, reason),
                     Protocol::NotReady{name, reason, obstacle.nameOfCover()}.toJson());
}

/// A flick moves the content of its flickable without any input, so that
/// nobody who watches the input would record it.
std::optional<EventData> ScriptCall::unseenStatement() const
{
    constexpr std::size_t objectAndDistances = 3;
    if (m_request.function != QLatin1String("flick") || m_request.arguments.size() != objectAndDistances)
        return std::nullopt;
    const SharedPtr<Object> flickable = m_targets.empty() ? nullptr : m_targets.front()->lookWith(*m_finder);
    if (!flickable)
        return std::nullopt;
    EventData statement(QtWrapper::flickODByNameFn(), flickable->scriptName(),
                        {m_request.arguments.at(1), m_request.arguments.at(2)});
    statement.time = QTime::currentTime();
    return statement;
}

void ScriptCall::carryOut()
{
    if (m_acting)
        m_acting();
    for (const auto &target : m_targets)
        target->forgetMotion();
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
    // The player of input goes ahead of the agent when the application does.
    connect(qApp, &QCoreApplication::aboutToQuit, this,
            [this] { m_hasEndedProgram = QtWrapper::InputPlayer::self()->isPlayed(); });
    // The function has only handed its input over.
    QtWrapper::InputPlayer::self()->whenIdle([self, result](const QString &problem) {
        if (self)
            self->inputDelivered(result, problem);
    });
}

void ScriptCall::inputDelivered(const SharedPtr<Object> &result, const QString &problem)
{
    if (!problem.isEmpty()) {
        m_responder.fail(Protocol::FunctionFailed, problem);
        deleteLater();
        return;
    }
    m_digestion.begin([this, result] {
        const CallTarget *const target = m_targets.empty() ? nullptr : m_targets.front().get();
        m_responder.respond(
            m_answer(result, target ? target->window() : nullptr, target ? target->pointInWindow() : QPoint()));
        deleteLater();
    });
}

} // namespace Vantle::Agent
