#include "agent/commands.h"

#include "agent/functionlist.h"
#include "agent/host.h"
#include "agent/methodcall.h"
#include "agent/namecheck.h"
#include "agent/objectproperties.h"
#include "agent/objecttree.h"
#include "agent/pictures.h"
#include "agent/scenedigest.h"
#include "agent/scriptcall.h"
#include "agent/snapshot.h"
#include "agent/valueencoding.h"
#include "protocol/fieldreader.h"
#include "protocol/messages.h"
#include "protocol/objectmessages.h"
#include "wrappers/qt/functions/inputplayer.h"
#include "wrappers/qt/wrapping.h"

#include <QtCore/QBuffer>
#include <QtCore/QCoreApplication>
#include <QtCore/QJsonArray>
#include <QtCore/private/qthread_p.h>
#include <QtGui/QGuiApplication>
#include <QtGui/QWindow>

#include <algorithm>

namespace Vantle::Agent {

namespace {

namespace Method = Protocol::Method;
using Protocol::FieldReader;

constexpr std::chrono::milliseconds defaultCallLimit(20000);
constexpr std::chrono::seconds farewellLimit(1);

// Without a frame for this long, nothing that a user could see is going on: no
// animation leaves out as many, and a cursor that blinks shows less often.
constexpr std::chrono::milliseconds quietTime(200);
constexpr std::chrono::milliseconds defaultSettlingLimit(2000);

bool isAnyWindowShown()
{
    const QWindowList windows = QGuiApplication::topLevelWindows();
    return std::any_of(windows.cbegin(), windows.cend(),
                       [](const QWindow *window) { return window->isVisible() && window->isExposed(); });
}

/// Whether the program has told its event loops to end. Its exit code is set
/// then, and a second exit would put another one in its place.
bool isQuitting()
{
    return QThreadData::get2(QThread::currentThread())->quitNow;
}

Protocol::Reply failure(int code, const QString &message)
{
    return {QJsonValue(), Protocol::Error{code, message}};
}

Protocol::Reply failure(const Protocol::Error &error)
{
    return {QJsonValue(), error};
}

Protocol::Reply wrongParameters(const QString &message)
{
    return failure(Protocol::InvalidParams, message);
}

Protocol::Reply success(const QJsonObject &result = {})
{
    return {result, std::nullopt};
}

void answer(const Protocol::Responder &responder, const Protocol::Reply &outcome)
{
    if (outcome.isError())
        responder.fail(outcome.error->code, outcome.error->message, outcome.error->data);
    else
        responder.respond(outcome.result);
}

template<typename Record>
QJsonArray arrayOf(const QList<Record> &records)
{
    QJsonArray array;
    for (const Record &record : records)
        array.append(record.toJson());
    return array;
}

/// Whether the answer is to hold names, which cost a walk over the scene each.
ValueEncoding::Naming namingIn(FieldReader *reader)
{
    return reader->boolean("named", true) ? ValueEncoding::WithNames : ValueEncoding::WithoutNames;
}

std::chrono::milliseconds limitIn(FieldReader *reader, std::chrono::milliseconds otherwise)
{
    return reader->has("timeout") ? std::chrono::milliseconds(reader->integer("timeout", 0)) : otherwise;
}

} // namespace

Commands::Commands(Host *host, Protocol::Connection *connection)
    : m_host(host)
    , m_connection(connection)
    , m_finder(&host->application(), &m_handles, host->isStrict())
{
    registerWaiting(Method::find, &Commands::find);
    registerImmediate(Method::properties, &Commands::properties);
    registerImmediate(Method::setProperty, &Commands::setProperty);
    registerImmediate(Method::invoke, &Commands::invoke);
    registerImmediate(Method::children, &Commands::children);
    registerImmediate(Method::describe, &Commands::describe);
    registerImmediate(Method::tree, &Commands::tree);
    registerImmediate(Method::digest, &Commands::digest);
    registerImmediate(Method::snapshot, &Commands::snapshot);
    registerImmediate(Method::functions, &Commands::functions);
    registerWaiting(Method::call, &Commands::call);
    registerImmediate(Method::grab, &Commands::grab);
    registerImmediate(Method::release, &Commands::release);
    registerWaiting(Method::settle, &Commands::settle);
    registerImmediate(Method::roundTrip, &Commands::roundTrip);
    registerWaiting(Method::quit, &Commands::quit);
}

Commands::~Commands()
{
    // Nobody will let go of what the script holds.
    QtWrapper::InputPlayer::letGo();
}

void Commands::registerImmediate(const QString &method, Outcome (Commands::*command)(const QJsonObject &))
{
    const QPointer<Commands> self(this);
    m_connection->onRequest(method, [self, command](const QJsonObject &params, const Responder &responder) {
        if (self)
            answer(responder, (self->*command)(params));
    });
}

void Commands::registerWaiting(const QString &method, void (Commands::*command)(const QJsonObject &, const Responder &))
{
    const QPointer<Commands> self(this);
    m_connection->onRequest(method, [self, command](const QJsonObject &params, const Responder &responder) {
        if (self)
            (self->*command)(params, responder);
    });
}

void Commands::find(const QJsonObject &params, const Responder &responder)
{
    FieldReader reader(params);
    Target target;
    target.name = reader.string("name");
    const bool mustBeReady = reader.boolean("ready", false);
    const ValueEncoding::Naming naming = namingIn(&reader);
    const std::chrono::milliseconds limit = limitIn(&reader, std::chrono::milliseconds::zero());
    if (!reader.complaint().isEmpty()) {
        answer(responder, wrongParameters(reader.complaint()));
        return;
    }
    m_waiting.until(limit, [this, target, mustBeReady, naming, responder](bool isLast) {
        if (responder.isOver())
            return true;
        const SharedPtr<Object> object = m_finder.look(target);
        if (!object) {
            const bool isInVain = isLast || !TargetFinder::mayAppear(target);
            if (isInVain)
                answer(responder, failure(m_finder.failure(target)));
            return isInVain;
        }
        const QString reason = mustBeReady ? notReadyReason(object) : QString();
        if (reason.isEmpty()) {
            responder.respond(ValueEncoding(&m_handles, naming).reference(object));
        } else if (isLast) {
            answer(responder,
                   failure({Protocol::ObjectNotReady, QStringLiteral("%1 is not ready: %2").arg(target.name, reason),
                            Protocol::NotReady{target.name, reason, QString()}.toJson()}));
        }
        return reason.isEmpty() || isLast;
    });
}

Commands::Outcome Commands::properties(const QJsonObject &params)
{
    FieldReader reader(params);
    const Target target = Target::readFrom(&reader);
    const QStringList names = reader.has("names") ? reader.strings("names") : QStringList();
    const ValueEncoding::Naming naming = namingIn(&reader);
    if (!reader.complaint().isEmpty())
        return wrongParameters(reader.complaint());
    const Found found = m_finder.find(target);
    if (found.error)
        return failure(*found.error);

    ValueEncoding encoding(&m_handles, naming);
    QString problem;
    QJsonObject result{{QStringLiteral("class"), found.object->className()}};
    if (naming == ValueEncoding::WithNames)
        result.insert(QStringLiteral("name"), found.object->scriptName());
    QObject *const native = QtWrapper::nativeQObject(found.object);
    if (!native)
        return failure(Protocol::ObjectGone, QStringLiteral("the object is gone"));
    const QJsonObject values = reader.has("names") ? namedProperties(native, names, &encoding, &problem)
                                                   : allProperties(native, &encoding);
    if (!problem.isEmpty())
        return wrongParameters(problem);
    result.insert(QStringLiteral("properties"), values);
    return success(result);
}

Commands::Outcome Commands::setProperty(const QJsonObject &params)
{
    FieldReader reader(params);
    const Target target = Target::readFrom(&reader);
    const QString property = reader.string("property");
    if (!reader.has("value"))
        reader.complain("value", "there");
    if (!reader.complaint().isEmpty())
        return wrongParameters(reader.complaint());
    QString problem;
    const std::optional<QVariant> value = ValueEncoding(&m_handles).decode(reader.any("value"), &problem);
    if (!value)
        return wrongParameters(problem);
    const Found found = m_finder.find(target);
    if (found.error)
        return failure(*found.error);
    problem = writeProperty(QtWrapper::nativeQObject(found.object), property, *value);
    return problem.isEmpty() ? success() : wrongParameters(problem);
}

Commands::Outcome Commands::invoke(const QJsonObject &params)
{
    FieldReader reader(params);
    const Target target = Target::readFrom(&reader);
    const QString method = reader.string("method");
    const QJsonArray list = reader.has("arguments") ? reader.array("arguments") : QJsonArray();
    const ValueEncoding::Naming naming = namingIn(&reader);
    if (!reader.complaint().isEmpty())
        return wrongParameters(reader.complaint());
    QString problem;
    const std::optional<QVariant> arguments = ValueEncoding(&m_handles).decode(list, &problem);
    if (!arguments)
        return wrongParameters(problem);
    const Found found = m_finder.find(target);
    if (found.error)
        return failure(*found.error);

    const QPointer<Commands> self(this);
    const MethodResult result = callMethod(QtWrapper::nativeQObject(found.object), method, arguments->toList());
    switch (result.outcome) {
    case MethodResult::NoSuchMethod: return wrongParameters(result.problem);
    case MethodResult::Failed: return failure(Protocol::FunctionFailed, result.problem);
    case MethodResult::Called: break;
    }
    // The method may have run an event loop, to the end of the connection.
    const QJsonValue value = self ? ValueEncoding(&m_handles, naming).encode(result.value) : QJsonValue();
    return success({{QStringLiteral("result"), value}});
}

Commands::Outcome Commands::children(const QJsonObject &params)
{
    FieldReader reader(params);
    ObjectList objects;
    const ValueEncoding::Naming naming = namingIn(&reader);
    const bool hasTarget = Target::isIn(reader);
    const Target target = hasTarget ? Target::readFrom(&reader) : Target();
    if (!reader.complaint().isEmpty())
        return wrongParameters(reader.complaint());
    if (hasTarget) {
        const Found found = m_finder.find(target);
        if (found.error)
            return failure(*found.error);
        objects = found.object->children();
    } else {
        objects = topLevelWindows();
    }
    QJsonArray list;
    ValueEncoding encoding(&m_handles, naming);
    for (const SharedPtr<Object> &object : objects) {
        if (!object->isNull())
            list.append(encoding.reference(object));
    }
    return success({{QStringLiteral("objects"), list}});
}

Commands::Outcome Commands::describe(const QJsonObject &params)
{
    FieldReader reader(params);
    const Target target = Target::readFrom(&reader);
    if (!reader.complaint().isEmpty())
        return wrongParameters(reader.complaint());
    const Found found = m_finder.find(target);
    return found.error ? failure(*found.error) : success(describeObject(found.object).toJson());
}

Commands::Outcome Commands::tree(const QJsonObject &)
{
    return success({{QStringLiteral("windows"), arrayOf(objectTree(&m_host->application()))}});
}

Commands::Outcome Commands::digest(const QJsonObject &)
{
    return success(digestOfScene().toJson());
}

Commands::Outcome Commands::snapshot(const QJsonObject &)
{
    return success(snapshotOf(&m_host->application()));
}

Commands::Outcome Commands::functions(const QJsonObject &)
{
    return success({{QStringLiteral("functions"), arrayOf(allFunctions())}});
}

void Commands::call(const QJsonObject &params, const Responder &responder)
{
    FieldReader reader(params);
    ScriptCall::Request request;
    request.function = reader.string("function");
    const QJsonArray arguments = reader.has("arguments") ? reader.array("arguments") : QJsonArray();
    const std::chrono::milliseconds limit = limitIn(&reader, defaultCallLimit);
    const ValueEncoding::Naming naming = namingIn(&reader);
    for (qsizetype i = 0; i < arguments.size(); ++i) {
        QString problem;
        const auto argument = ValueEncoding(&m_handles).decodeArgument(arguments.at(i), &problem);
        if (argument)
            request.arguments.push_back(*argument);
        else
            reader.complain(QStringLiteral("argument %1: %2").arg(i + 1).arg(problem));
    }
    if (!reader.complaint().isEmpty()) {
        answer(responder, wrongParameters(reader.complaint()));
        return;
    }
    auto *const pending = new ScriptCall(
        request, &m_finder, responder, [this, naming](const SharedPtr<Object> &result, QWindow *window, QPoint point) {
            QJsonObject json{{QStringLiteral("result"), ValueEncoding(&m_handles, naming).encode(result)}};
            const int handle = window ? m_handles.handleFor(QtWrapper::wrapAndRegisterQObject(window)) : 0;
            if (handle != 0)
                json.insert(QStringLiteral("action"), Protocol::ActionPoint{handle, point.x(), point.y()}.toJson());
            return json;
        });
    pending->setParent(this);
    // Told ahead of what may end the program at once.
    pending->onActing([this] {
        m_connection->notify(Protocol::Method::acting, {});
        m_connection->waitForSent(farewellLimit);
    });
    const QPointer<ScriptCall> guard(pending);
    m_waiting.until(limit, [guard](bool isLast) {
        const bool isDone = !guard || guard->tryNow(isLast);
        if (guard && guard->isOver())
            guard->deleteLater();
        return isDone;
    });
}

Commands::Outcome Commands::grab(const QJsonObject &params)
{
    FieldReader reader(params);
    SharedPtr<Object> object;
    const bool isOfWindow = reader.boolean("window", false);
    if (Target::isIn(reader)) {
        const Target target = Target::readFrom(&reader);
        if (!reader.complaint().isEmpty())
            return wrongParameters(reader.complaint());
        const Found found = m_finder.find(target);
        if (found.error)
            return failure(*found.error);
        object = isOfWindow ? windowOf(found.object) : found.object;
        if (!object)
            return failure(Protocol::FunctionFailed, QStringLiteral("the object lies in no window"));
    } else {
        object = windowInFront();
        if (!object)
            return failure(Protocol::FunctionFailed, QStringLiteral("the program shows no window"));
    }
    QString problem;
    const QPixmap picture = pictureOf(object, &problem);
    if (picture.isNull())
        return failure(Protocol::FunctionFailed, problem);
    QByteArray png;
    QBuffer buffer(&png);
    picture.save(&buffer, "PNG");
    QJsonObject result{{QStringLiteral("png"), QString::fromLatin1(png.toBase64())},
                       {QStringLiteral("width"), picture.width()},
                       {QStringLiteral("height"), picture.height()},
                       {QStringLiteral("ratio"), picture.devicePixelRatio()}};
    if (qobject_cast<QWindow *>(QtWrapper::nativeQObject(object)))
        result.insert(QStringLiteral("window"), m_handles.handleFor(object));
    return success(result);
}

Commands::Outcome Commands::release(const QJsonObject &params)
{
    FieldReader reader(params);
    const QJsonArray handles = reader.array("objects");
    for (const QJsonValue &handle : handles) {
        if (!handle.isDouble())
            reader.complain("objects", "an array of handles");
    }
    if (!reader.complaint().isEmpty())
        return wrongParameters(reader.complaint());
    for (const QJsonValue &handle : handles)
        m_handles.release(handle.toInt());
    return success();
}

Commands::Outcome Commands::roundTrip(const QJsonObject &)
{
    return success(checkNames(&m_host->application()));
}

void Commands::settle(const QJsonObject &params, const Responder &responder)
{
    FieldReader reader(params);
    const std::chrono::milliseconds limit = limitIn(&reader, defaultSettlingLimit);
    if (!reader.complaint().isEmpty()) {
        answer(responder, wrongParameters(reader.complaint()));
        return;
    }
    m_waiting.until(limit, [this, responder](bool isLast) {
        const bool isSettled = isAnyWindowShown() && m_waiting.timeWithoutFrame() >= quietTime;
        if (isSettled || isLast)
            responder.respond(QJsonObject{{QStringLiteral("settled"), isSettled}});
        return isSettled || responder.isOver();
    });
}

void Commands::quit(const QJsonObject &, const Responder &responder)
{
    if (isQuitting()) {
        responder.fail(Protocol::ProgramEnds, QStringLiteral("the program is ending by itself"));
        return;
    }
    responder.respond();
    m_connection->waitForSent(farewellLimit);
    QCoreApplication::exit(0);
}

} // namespace Vantle::Agent
