#include "tool/replay/scriptrun.h"

#include "tool/freshsettings.h"
#include "tool/replay/stacktrace.h"
#include "tool/stringliteral.h"
#include "tool/treefile.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QRegularExpression>

namespace Vantle::Tool::Replay {

namespace {

using namespace std::chrono_literals;

// Of what a program printed, as much is kept as people read.
constexpr qint64 longestOutput = 64 * 1024;

constexpr std::chrono::seconds stopRecordingLimit = 3s;

QString shownWords(const QStringList &words)
{
    QStringList shown;
    for (const QString &word : words)
        shown.append(plainOrQuoted(word));
    return shown.join(QLatin1Char(' '));
}

/// True if \p step, which ended with \p error, is the call of a function of which
/// the engine knows nothing.
bool callsUnknownFunction(const Step &step, const QString &error)
{
    static const QRegularExpression unknown(QStringLiteral("^ReferenceError: ([\\w$]+) is not defined$"));
    const QString name = unknown.match(error).captured(1);
    return !name.isEmpty() && ScriptSource(step.source).calls(name);
}

} // namespace

ScriptRun::ScriptRun(const ReplayOptions &options, const Installation &installation, const QString &file,
                     const QMap<QString, QString> &environment)
    : m_options(options)
    , m_file(file)
    , m_path(QFileInfo(file).absoluteFilePath())
    , m_environment(environment)
    , m_session(installation)
{
}

ScriptRun::~ScriptRun() = default;

ScriptResult ScriptRun::run()
{
    QString error;
    const auto source = ScriptSource::read(m_path, &error);
    m_recorder = std::make_unique<StepRecorder>(m_file, m_path, source.value_or(ScriptSource()));
    connect(m_recorder.get(), &StepRecorder::progressed, this, &ScriptRun::progressed);
    connect(m_recorder.get(), &StepRecorder::failed, this, &ScriptRun::failed);
    connect(&m_session, &ProgramSession::logged, m_recorder.get(), &StepRecorder::log);
    ScriptResult &result = m_recorder->result();
    if (source)
        error = setUp(*source);
    if (error.isEmpty())
        runScript(*source);
    else
        m_startFailure = error;
    finishProgram();
    judge();
    result.duration = m_recorder->now();
    result.programWords = m_lastWords;
    result.programOutput = programOutput();
    result.programEnd = m_session.ownEnd();
    return result;
}

void ScriptRun::stop()
{
    m_stopped = true;
    {
        const QMutexLocker locker(&m_engineLock);
        if (m_engine)
            m_engine->interrupt();
    }
    QMetaObject::invokeMethod(&m_session, &ProgramSession::stop, Qt::QueuedConnection);
}

QString ScriptRun::setUp(const ScriptSource &source)
{
    const QString error = prepareDirectories();
    if (!error.isEmpty())
        return error;
    if (!m_options.recordFile.isEmpty()) {
        m_recording.keepOffStandardOutput();
        if (!m_recording.openFile(m_options.recordFile))
            return m_recording.errorString();
        connect(&m_session, &ProgramSession::statementRecorded, this,
                [this](const Protocol::Statement &statement) { m_recording.add(statement); });
        connect(&m_session, &ProgramSession::commentRecorded, this,
                [this](const QString &text) { m_recording.addComment(text); });
    }
    {
        const QMutexLocker locker(&m_engineLock);
        const auto starter = [this](const QStringList &words) { return startProgram(words); };
        m_engine = std::make_unique<ScriptEngine>(&m_session, m_recorder.get(), m_options, starter);
        m_engine->host().setObserver(m_observer);
    }
    // A script that starts a program of its own gets none beforehand.
    if (m_options.launch.words.isEmpty() || source.callsWithArguments(QStringLiteral("startApplication")))
        return QString();
    const QString startError = startProgram({});
    return startError.isEmpty() ? m_engine->defineFunctions() : startError;
}

QString ScriptRun::prepareDirectories()
{
    if (!m_directory.isValid())
        return QStringLiteral("cannot make a directory for temporary files: ") + m_directory.errorString();
    if (!m_options.freshSettings && m_options.workers == 1)
        return QString();
    m_environment.insert(freshSettings(m_directory.path()));
    if (m_options.workers > 1)
        separateRuntime();
    return QString();
}

/// Programs of which a user may have one only find each other here.
void ScriptRun::separateRuntime()
{
    const QString path = m_directory.filePath(QStringLiteral("runtime"));
    if (!QDir().mkdir(path))
        return;
    QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    // The servers of the session listen in the user's own.
    const QString own = qEnvironmentVariable("XDG_RUNTIME_DIR");
    const QString wayland = qEnvironmentVariable("WAYLAND_DISPLAY", QStringLiteral("wayland-0"));
    for (const QString &name :
         {wayland, QStringLiteral("bus"), QStringLiteral("pulse"), QStringLiteral("pipewire-0")}) {
        const QString server = own + QLatin1Char('/') + name;
        if (!own.isEmpty() && QFileInfo(name).isRelative() && QFile::exists(server))
            QFile::link(server, path + QLatin1Char('/') + name);
    }
    m_environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), path);
}

QString ScriptRun::startProgram(const QStringList &words)
{
    LaunchOptions launch = m_options.launch;
    if (!words.isEmpty())
        launch.words = words;
    if (launch.words.isEmpty()) {
        return QStringLiteral("there is no program to start: name one in startApplication(), or on the command line "
                              "behind --");
    }
    launch.environment.insert(m_environment);
    launch.outputFile = m_directory.filePath(QStringLiteral("output"));
    launch.settings.record = !m_options.recordFile.isEmpty();
    m_lastWords = shownWords(launch.words);
    const QString error = m_session.start(launch);
    if (error.isEmpty() && launch.settings.record && m_recording.count() == 0)
        m_recording.begin(launch.words, QDateTime::currentDateTime());
    return error;
}

void ScriptRun::runScript(const ScriptSource &source)
{
    if (m_stopped)
        return;
    const auto error = m_engine->run(source, m_path);
    if (error) {
        endByError(*error);
        return;
    }
    m_recorder->endWell();
    if (m_observer && m_session.isRunning() && !m_stopped)
        m_observer->scriptDone(&m_session);
}

void ScriptRun::endByError(const ScriptError &error)
{
    if (m_stopped)
        return;
    m_errorEnded = true;
    m_programEnded = error.name == ScriptHost::programEndedName();
    if (error.name == ScriptHost::startFailedName() || error.name == ScriptHost::noProgramName())
        m_startFailure = error.message;
    const QString hint = error.hint.isEmpty() || !m_session.wasStarted() ? QString()
                                                                         : QStringLiteral("; ") + error.hint;
    const int number = m_recorder->endByError(error.message + hint, error.stack, error.failure);
    Step &step = m_recorder->step(number);
    if (step.after.isEmpty())
        step.after = m_recorder->pictures().add(Camera(&m_session, m_options).failure());
    // The functions of the program come with the program.
    if (!m_session.wasStarted() && callsUnknownFunction(step, error.message))
        m_startFailure = QStringLiteral("%1; %2").arg(error.message, ProgramSession::noProgramText());
}

void ScriptRun::finishProgram()
{
    if (m_session.isRunning() && !m_options.recordFile.isEmpty())
        m_session.request(Protocol::Method::stopRecording, {}, stopRecordingLimit);
    if (m_session.isRunning() && !m_options.treeFile.isEmpty())
        saveTree();
    m_session.finish();
    m_recording.end(QStringLiteral("Recorded while %1 was replayed.").arg(plainOrQuoted(m_file)));
}

void ScriptRun::saveTree()
{
    const Answer answer = m_session.request(Protocol::Method::tree, {}, treeLimit);
    // How it ended is told elsewhere.
    if (answer.kind == Answer::Ended)
        return;
    const QString problem = answer.kind == Answer::Result ? writeTreeFile(m_options.treeFile, answer.result.toObject())
                                                          : answer.error.message;
    if (!problem.isEmpty())
        m_startFailure = problem;
}

void ScriptRun::judge()
{
    ScriptResult &result = m_recorder->result();
    const bool endIsFine = m_engine && m_engine->host().isEndExpected();
    const QString earlierDeath = m_engine ? m_engine->host().earlierDeath() : QString();
    if (m_stopped) {
        result.verdict = Verdict::NotRun;
        result.message = QStringLiteral("stopped by the user");
    } else if (!m_startFailure.isEmpty()) {
        result.verdict = m_session.crashedAtStart() ? Verdict::ProgramDied : Verdict::NotRun;
        result.message = m_startFailure;
    } else if (m_programEnded || (m_session.diedBadly() && !endIsFine)) {
        result.verdict = Verdict::ProgramDied;
        result.message = QStringLiteral("the program ") + m_session.endText();
    } else if (!earlierDeath.isEmpty()) {
        result.verdict = Verdict::ProgramDied;
        result.message = QStringLiteral("the program %1 before the script started another one").arg(earlierDeath);
    } else if (!m_recording.errorString().isEmpty()) {
        result.verdict = Verdict::NotRun;
        result.message = m_recording.errorString();
    } else {
        const bool failed = m_errorEnded || !result.failures().isEmpty();
        result.verdict = failed ? Verdict::Failed : Verdict::Passed;
    }
}

QString ScriptRun::programOutput() const
{
    QFile file(m_directory.filePath(QStringLiteral("output")));
    if (!file.open(QIODevice::ReadOnly))
        return QString();
    const bool isCut = file.size() > longestOutput;
    if (isCut)
        file.seek(file.size() - longestOutput);
    const QString text = QString::fromUtf8(file.readAll());
    return isCut ? QStringLiteral("…\n") + text.section(QLatin1Char('\n'), 1) : text;
}

} // namespace Vantle::Tool::Replay
