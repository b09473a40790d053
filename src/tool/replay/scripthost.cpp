#include "tool/replay/scripthost.h"

#include "tool/outputfile.h"
#include "tool/replay/explanation.h"
#include "tool/replay/imagecheck.h"
#include "tool/replay/stacktrace.h"

#include <QtCore/QDeadlineTimer>
#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtQml/QJSEngine>

#include <algorithm>
#include <cmath>

namespace Vantle::Tool::Replay {

namespace {

using namespace std::chrono_literals;

// What a program may take for an answer on top of the time that it was given
// to wait; after that it counts as hanging. A busy computer may leave it without
// time for seconds.
constexpr std::chrono::milliseconds shortestPatience = 10s;

// What moves is somewhere else after this.
constexpr std::chrono::milliseconds timeOfTwoFrames = 40ms;

constexpr std::chrono::seconds nameLimit = 5s;

const QString actionKind = QStringLiteral("action");
const QString objectKey = QStringLiteral("object");
const QString nameKey = QStringLiteral("name");
const QString windowKey = QStringLiteral("window");

Step::Kind kindOf(const QString &name)
{
    if (name == actionKind)
        return Step::Action;
    return name == QLatin1String("write") ? Step::Write : Step::Wait;
}

QJsonObject objectOf(const QString &json)
{
    return QJsonDocument::fromJson(json.toUtf8()).object();
}

QJsonArray arrayOf(const QString &json)
{
    return QJsonDocument::fromJson(json.toUtf8()).array();
}

QString jsonOf(const QJsonObject &object)
{
    return QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact));
}

QString resultJson(const QJsonValue &result)
{
    return jsonOf({{QStringLiteral("result"), result}});
}

QString errorName(const Answer &answer)
{
    switch (answer.kind) {
    case Answer::NoProgram: return ScriptHost::noProgramName();
    case Answer::Ended: return ScriptHost::programEndedName();
    case Answer::TimedOut: return QStringLiteral("ProgramHangs");
    case Answer::Stopped: return QStringLiteral("Stopped");
    case Answer::Refused: break;
    case Answer::Result: return QString();
    }
    switch (answer.error.code) {
    case Protocol::ObjectNotFound: return QStringLiteral("ObjectNotFound");
    case Protocol::AmbiguousName: return QStringLiteral("AmbiguousName");
    case Protocol::ObjectNotReady: return QStringLiteral("ObjectNotReady");
    case Protocol::ObjectGone: return QStringLiteral("ObjectGone");
    case Protocol::FunctionFailed: return QStringLiteral("FunctionFailed");
    default: return QStringLiteral("AgentError");
    }
}

/// The object that a request is about: its own target, or what the function that
/// it calls takes first. Empty if there is none.
QJsonObject targetOf(const QString &method, const QJsonObject &params)
{
    const bool isCall = method == Protocol::Method::call;
    const QJsonValue first = isCall ? params.value(QLatin1String("arguments")).toArray().at(0) : QJsonValue();
    if (first.isString())
        return {{nameKey, first}};
    const QJsonObject holder = isCall ? first.toObject() : params;
    for (const QString &key : {objectKey, nameKey}) {
        if (holder.contains(key))
            return {{key, holder.value(key)}};
    }
    return {};
}

QString defaultMessage(const QString &function, bool hasDifferences)
{
    if (function == QLatin1String("test.fail"))
        return QStringLiteral("the script says so");
    if (function == QLatin1String("test.verify"))
        return QStringLiteral("the condition does not hold");
    return hasDifferences ? QStringLiteral("the values differ") : QString();
}

} // namespace

ScriptHost::ScriptHost(QJSEngine *engine, ProgramSession *session, StepRecorder *recorder, const ReplayOptions &options,
                       Starter starter)
    : m_engine(engine)
    , m_session(session)
    , m_recorder(recorder)
    , m_options(options)
    , m_starter(std::move(starter))
    , m_camera(session, options)
{
}

QString ScriptHost::programEndedName()
{
    return QStringLiteral("ProgramEnded");
}

QString ScriptHost::noProgramName()
{
    return QStringLiteral("NoProgram");
}

QString ScriptHost::startFailedName()
{
    return QStringLiteral("StartFailed");
}

int ScriptHost::waitLimit() const
{
    return static_cast<int>(m_options.waitLimit.count());
}

QJsonValue ScriptHost::functionNames(QString *error)
{
    const Answer answer = requestWithin(Protocol::Method::functions, {});
    if (answer.kind != Answer::Result) {
        *error = QStringLiteral("the agent does not say what it can do: ") + answer.error.message;
        return QJsonValue(QJsonValue::Undefined);
    }
    QJsonArray names;
    QList<Protocol::FunctionDescription> described;
    const QJsonArray functions = answer.result.toObject().value(QLatin1String("functions")).toArray();
    for (const QJsonValue &function : functions) {
        names.append(function.toObject().value(QLatin1String("name")));
        if (const auto description = Protocol::FunctionDescription::fromJson(function.toObject()))
            described.append(*description);
    }
    m_callText.setFunctions(described);
    return names;
}

QString ScriptHost::perform(const QString &kind, const QString &function, const QString &method, const QString &params,
                            const QString &stack)
{
    const int step = kind.isEmpty() ? 0 : m_recorder->begin(kindOf(kind), function, stack);
    const bool isAction = kind == actionKind;
    const QJsonObject request = objectOf(params);
    const QJsonObject target = targetOf(method, request);
    if (isAction)
        showBefore(step, target);
    const bool wasRunning = m_session->isRunning();
    Answer answer = requestWithin(method, request);
    // A click may end the program, and then does what it should, unless the
    // program says that it was not even clicked.
    const bool mayHaveEndedIt = isAction && wasRunning && answer.error.code != Protocol::ProgramEnds;
    if (mayHaveEndedIt && answer.kind == Answer::Ended && !m_session->isRunning() && !m_session->diedBadly())
        answer = {Answer::Result, QJsonObject(), {}};
    const QString text = reply(step, answer, target);
    noteCall(step, method, request, answer.kind != Answer::Result);
    if (isAction && answer.kind == Answer::Result) {
        showAfter(step, answer.result.toObject());
        tellObserver(step);
    }
    return text;
}

/// Remembers with which values a step was called. The names of objects take the
/// program time: they are asked for when somebody is to read them.
void ScriptHost::noteCall(int step, const QString &method, const QJsonObject &request, bool failed)
{
    if (step == 0 || (!failed && !m_camera.showsSteps() && CallText::holdsHandles(request)))
        return;
    const QString call = m_callText.textOf(method, request, [this](int handle) { return nameOf(handle); });
    Step &called = m_recorder->step(step);
    if (!saysTheSame(called.source, call))
        called.call = call;
}

QString ScriptHost::nameOf(int handle)
{
    Answer answer;
    if (m_session->isRunning() && !m_session->isOverdue())
        answer = m_session->request(Protocol::Method::describe, {{objectKey, handle}}, nameLimit);
    const QString name = answer.result.toObject().value(nameKey).toString();
    return name.isEmpty() ? QStringLiteral("an object that is gone") : name;
}

void ScriptHost::tellObserver(int step)
{
    if (m_observer && step != 0)
        m_observer->statementDone(m_session, m_recorder->step(step).position.line);
}

int ScriptHost::begin(const QString &kind, const QString &function, const QString &stack)
{
    return m_recorder->beginQuiet(kindOf(kind), function, stack);
}

void ScriptHost::end(int step)
{
    m_recorder->end(step, Step::Passed);
}

int ScriptHost::fail(int step, const QString &message, int cause)
{
    const int number = m_recorder->addFailure(step, message, m_recorder->explanationOfFailure(cause));
    if (step != 0)
        m_recorder->step(step).after = m_recorder->pictures().add(m_camera.failure());
    return number;
}

double ScriptHost::now() const
{
    return static_cast<double>(m_recorder->now());
}

void ScriptHost::pause(int milliseconds)
{
    m_session->pause(std::chrono::milliseconds(std::max(0, milliseconds)));
}

QString ScriptHost::snooze(double seconds, const QString &stack)
{
    const int step = m_recorder->begin(Step::Wait, QStringLiteral("snooze"), stack);
    const double milliseconds = std::min(std::ceil(seconds * 1000), 1e9);
    const bool wasRunning = m_session->isRunning();
    m_session->pause(std::chrono::milliseconds(static_cast<qint64>(milliseconds)));
    if (wasRunning && m_session->diedBadly())
        return failure(step, programEndedName(), QStringLiteral("the program ") + m_session->endText());
    m_recorder->end(step, Step::Passed);
    tellObserver(step);
    return resultJson(QJsonValue::Null);
}

void ScriptHost::check(bool passed, const QString &function, const QString &message, const QString &differences,
                       const QString &stack)
{
    const int step = m_recorder->begin(Step::Check, function, stack);
    if (step == 0)
        return;
    const QJsonArray list = arrayOf(differences);
    for (const QJsonValue &value : list) {
        if (const auto difference = Protocol::Difference::fromJson(value.toObject()))
            m_recorder->step(step).values.append(*difference);
    }
    if (!passed)
        m_recorder->step(step).after = m_recorder->pictures().add(m_camera.failure());
    const bool explain = !passed && message.isEmpty();
    m_recorder->end(step, passed ? Step::Passed : Step::Failed,
                    explain ? defaultMessage(function, !list.isEmpty()) : message);
}

void ScriptHost::log(const QString &function, const QString &text, bool isWarning, const QString &stack)
{
    const int step = m_recorder->begin(Step::Message, function, stack);
    if (step == 0)
        return;
    m_recorder->step(step).log.append({isWarning, text});
    m_recorder->end(step, Step::Passed);
}

QString ScriptHost::screenshot(const QString &target, const QString &file, const QString &stack)
{
    const int step = m_recorder->begin(Step::Screenshot, QStringLiteral("test.screenshot"), stack);
    QString problem;
    const Picture picture = pictureFor(step, target, &problem);
    if (!problem.isEmpty())
        return problem;
    QString error = file.isEmpty() ? QString() : pathError(file);
    if (error.isEmpty() && !file.isEmpty())
        error = writeOutputWithFolders(pathOf(file), picture.png);
    if (!error.isEmpty())
        return failure(step, QStringLiteral("ScreenshotFailed"), error);
    m_recorder->step(step).after = m_recorder->pictures().add(picture);
    m_recorder->end(step, Step::Passed, file.isEmpty() ? QString() : QStringLiteral("written to ") + pathOf(file));
    return resultJson(QJsonValue::Null);
}

QString ScriptHost::compareImage(const QString &target, const QString &file, int tolerance, double pixels,
                                 const QString &stack)
{
    const int step = m_recorder->begin(Step::Check, QStringLiteral("test.compareImage"), stack);
    QString problem;
    const Picture picture = pictureFor(step, target, &problem);
    if (!problem.isEmpty())
        return problem;
    if (const QString error = pathError(file); !error.isEmpty())
        return failure(step, QStringLiteral("ComparisonFailed"), error);
    const PictureTolerance allowed{tolerance, static_cast<qint64>(pixels)};
    const ImageCheck result = checkImage(picture.png, pathOf(file), allowed, m_options.updateImages);
    Step &checked = m_recorder->step(step);
    checked.after = m_recorder->pictures().add(picture);
    checked.kept = m_recorder->pictures().add({result.kept, picture.size});
    checked.difference = m_recorder->pictures().add({result.difference, picture.size});
    m_recorder->end(step, result.passed ? Step::Passed : Step::Failed, result.message);
    return resultJson(result.passed);
}

QString ScriptHost::start(const QString &words, const QString &stack)
{
    const int step = m_recorder->begin(Step::Action, QStringLiteral("startApplication"), stack);
    QStringList list;
    const QJsonArray values = arrayOf(words);
    for (const QJsonValue &value : values)
        list.append(value.toString());
    endProgram();
    m_endExpected = false;
    QString error = m_starter(list);
    const QJsonValue names = error.isEmpty() ? functionNames(&error) : QJsonValue();
    if (!error.isEmpty())
        return failure(step, startFailedName(), error);
    m_recorder->end(step, Step::Passed, m_session->description());
    if (m_camera.showsSteps())
        m_recorder->step(step).after = m_recorder->pictures().add(m_camera.window({}));
    return resultJson(names);
}

/// The next program is not to hide how this one ended.
void ScriptHost::endProgram()
{
    m_session->finish();
    if (m_earlierDeath.isEmpty() && m_session->diedBadly() && !m_endExpected)
        m_earlierDeath = m_session->endText();
}

QString ScriptHost::close(const QString &stack)
{
    const int step = m_recorder->begin(Step::Action, QStringLiteral("closeApplication"), stack);
    showBefore(step, {});
    m_session->finish();
    return exitReply(step);
}

QString ScriptHost::waitForExit(int milliseconds, const QString &stack)
{
    const int step = m_recorder->begin(Step::Wait, QStringLiteral("waitForExit"), stack);
    if (m_session->wasStarted() && !m_session->waitForEnd(std::chrono::milliseconds(milliseconds))) {
        const double seconds = milliseconds / 1000.0;
        return failure(step, QStringLiteral("ProgramRunsOn"),
                       QStringLiteral("the program has not ended within %1 s").arg(seconds));
    }
    return exitReply(step);
}

/// The exit code for the script, which has asked for it: it may be any.
QString ScriptHost::exitReply(int step)
{
    const auto &end = m_session->end();
    if (!end)
        return failure(step, noProgramName(), ProgramSession::noProgramText());
    if (end->crashed)
        return failure(step, programEndedName(), QStringLiteral("the program ") + m_session->endText());
    m_endExpected = true;
    m_recorder->end(step, Step::Passed, QStringLiteral("the program ") + m_session->endText());
    return resultJson(end->requested ? QJsonValue() : QJsonValue(end->number));
}

QJSValue ScriptHost::importModule(const QString &file, int line, const QString &stack)
{
    m_recorder->setImportLine(line);
    const QList<Position> positions = positionsOfStack(stack);
    const QString importing = positions.isEmpty() ? QString() : positions.first().file;
    const QString path = QDir(QFileInfo(importing).path()).absoluteFilePath(file);
    if (!QFileInfo(path).isReadable())
        return QStringLiteral("cannot import \"%1\": there is no file %2 that can be read").arg(file, path);
    const QJSValue module = m_engine->importModule(path);
    if (module.isObject() && !module.isError())
        return module;
    QString message = QStringLiteral("cannot import \"%1\": %2").arg(file, module.toString());
    if (module.isError() && module.property(QStringLiteral("lineNumber")).isNumber()) {
        const QUrl url(module.property(QStringLiteral("fileName")).toString());
        message += QStringLiteral(" (%1)").arg(
            positionText({url.toLocalFile(), module.property(QStringLiteral("lineNumber")).toInt(), 0}));
    }
    return message;
}

void ScriptHost::endImport()
{
    m_recorder->setImportLine(0);
}

Answer ScriptHost::requestWithin(const QString &method, const QJsonObject &params)
{
    const std::chrono::milliseconds waiting(params.value(QLatin1String("timeout")).toInt());
    return m_session->request(method, params, waiting,
                              std::max<std::chrono::milliseconds>(m_options.waitLimit, shortestPatience));
}

/// Waits until the object is there, visible, and at rest, and gives its handle
/// as the target of further requests.
Answer ScriptHost::findAtRest(const QJsonObject &target)
{
    if (target.isEmpty())
        return {Answer::Result, target, {}};
    const QDeadlineTimer deadline(m_options.waitLimit);
    QJsonObject object = target;
    if (target.contains(nameKey)) {
        const Answer found = requestWithin(Protocol::Method::find,
                                           {{nameKey, target.value(nameKey)},
                                            {QStringLiteral("timeout"), waitLimit()}});
        if (found.kind != Answer::Result)
            return found;
        object = {{objectKey, found.result.toObject().value(objectKey)}};
    }
    const QString geometryKey = QStringLiteral("geometry");
    for (QJsonObject last;;) {
        const bool isLast = deadline.hasExpired();
        const Answer answer = requestWithin(Protocol::Method::describe, object);
        if (answer.kind != Answer::Result)
            return answer;
        const QJsonObject now = answer.result.toObject();
        const bool isVisible = now.value(QLatin1String("visible")).toBool();
        if (isVisible && now.value(geometryKey) == last.value(geometryKey))
            return {Answer::Result, object, {}};
        if (isLast)
            return notReady(now,
                            isVisible ? QStringLiteral("it is still moving") : QStringLiteral("it is not visible"));
        last = isVisible ? now : QJsonObject();
        m_session->pause(timeOfTwoFrames);
    }
}

Answer ScriptHost::notReady(const QJsonObject &described, const QString &reason) const
{
    const QString name = described.value(nameKey).toString();
    return {Answer::Refused,
            {},
            {Protocol::ObjectNotReady, QStringLiteral("cannot take a picture of %1: %2").arg(name, reason),
             Protocol::NotReady{name, reason, QString()}.toJson()}};
}

/// The picture that a script asks for. What goes wrong ends the step, and
/// \p problem is the reply then.
Picture ScriptHost::pictureFor(int step, const QString &target, QString *problem)
{
    const Answer found = findAtRest(objectOf(target));
    if (found.kind != Answer::Result) {
        *problem = reply(step, found, objectOf(target));
        return {};
    }
    QString error;
    const Picture picture = m_camera.take(found.result.toObject(), &error);
    if (!error.isEmpty())
        *problem = failure(step, QStringLiteral("ScreenshotFailed"), error);
    return picture;
}

QString ScriptHost::reply(int step, const Answer &answer, const QJsonObject &target)
{
    if (answer.kind != Answer::Result)
        return failure(step, errorName(answer), answer.error.message, explanationOf(answer.error), target);
    m_recorder->end(step, Step::Passed);
    return resultJson(answer.result);
}

QString ScriptHost::failure(int step, const QString &name, const QString &message, const Explanation &explanation,
                            const QJsonObject &target)
{
    const int number = m_recorder->addFailure(step, message, explanation);
    // What is not there would be where the closest one is.
    const QList<Protocol::Candidate> &closest = explanation.candidates;
    const QJsonObject shown = closest.isEmpty() ? target : QJsonObject{{nameKey, closest.first().name}};
    if (step != 0)
        m_recorder->step(step).after = m_recorder->pictures().add(m_camera.failure(shown));
    return jsonOf(
        {{QStringLiteral("error"), message}, {QStringLiteral("name"), name}, {QStringLiteral("failure"), number}});
}

void ScriptHost::showBefore(int step, const QJsonObject &target)
{
    if (step == 0 || !m_camera.showsSteps())
        return;
    const QString key = m_recorder->pictures().add(m_camera.window(target));
    Step &shown = m_recorder->step(step);
    shown.before = key;
    // Taking the picture is none of the step's own time.
    shown.start = m_recorder->now();
}

void ScriptHost::showAfter(int step, const QJsonObject &result)
{
    if (step == 0 || !m_camera.showsSteps())
        return;
    const QJsonObject action = result.value(QLatin1String("action")).toObject();
    QString error;
    Picture picture;
    if (action.contains(windowKey))
        picture = m_camera.take({{objectKey, action.value(windowKey)}}, &error);
    // The window may have been closed by the action.
    if (picture.png.isEmpty())
        picture = m_camera.window({});
    Step &shown = m_recorder->step(step);
    shown.after = m_recorder->pictures().add(picture);
    if (action.isEmpty())
        return;
    const QPointF point(action.value(QLatin1String("x")).toDouble(), action.value(QLatin1String("y")).toDouble());
    const Picture *before = m_recorder->pictures().find(shown.before);
    const qint64 window = action.value(windowKey).toInteger();
    const bool isOfThatWindow = before && (before->window == 0 || before->window == window);
    if (isOfThatWindow && QRectF(QPointF(), before->size).contains(point))
        shown.point = point;
}

QString ScriptHost::pathOf(const QString &file) const
{
    return QDir(m_recorder->directory()).absoluteFilePath(file);
}

QString ScriptHost::pathError(const QString &file) const
{
    if (file.contains(QChar::Null))
        return QStringLiteral("the name of a picture can't hold the character NUL");
    if (m_options.allowPaths)
        return QString();
    // By where the links on the way lead, as far as the way is there.
    const QString folder = QFileInfo(m_recorder->directory()).canonicalFilePath();
    QString way = QDir::cleanPath(pathOf(file));
    const auto isThere = [](const QFileInfo &info) { return info.exists() || info.isSymLink(); };
    while (!isThere(QFileInfo(way)) && way != QLatin1String("/"))
        way = QFileInfo(way).path();
    const QString real = QFileInfo(way).canonicalFilePath();
    if (!folder.isEmpty() && (real == folder || real.startsWith(folder + u'/')))
        return QString();
    return QStringLiteral("the picture \"%1\" does not lie in the folder of the script or below; \"--allow-paths\" "
                          "lets scripts use other places")
        .arg(file);
}

} // namespace Vantle::Tool::Replay
