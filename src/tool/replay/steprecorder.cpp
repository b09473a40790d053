#include "tool/replay/steprecorder.h"

#include "tool/replay/stacktrace.h"

#include <QtCore/QFileInfo>

#include <algorithm>

namespace Vantle::Tool::Replay {

StepRecorder::StepRecorder(const QString &file, const QString &path, const ScriptSource &source, QObject *parent)
    : QObject(parent)
    , m_path(path)
{
    m_sources.insert(path, source);
    m_progress.lineCount = source.codeLineCount();
    m_result.file = file;
    m_result.startedAt = QDateTime::currentDateTime();
    m_clock.start();
}

int StepRecorder::begin(Step::Kind kind, const QString &function, const QString &stack)
{
    if (m_quietStep != 0)
        return 0;
    Step step;
    step.number = static_cast<int>(m_result.steps.size()) + 1;
    step.kind = kind;
    step.function = function;
    step.start = now();
    place(&step, stack);
    m_result.steps.append(step);
    m_openStep = step.number;
    return step.number;
}

int StepRecorder::beginQuiet(Step::Kind kind, const QString &function, const QString &stack)
{
    const int number = begin(kind, function, stack);
    if (number != 0)
        m_quietStep = number;
    return number;
}

Step &StepRecorder::step(int number)
{
    if (number >= 1 && number <= m_result.steps.size())
        return m_result.steps[number - 1];
    m_unseen = Step();
    return m_unseen;
}

void StepRecorder::end(int number, Step::State state, const QString &message)
{
    if (number == 0)
        return;
    Step &ended = step(number);
    ended.state = state;
    ended.duration = now() - ended.start;
    if (!message.isEmpty())
        ended.message = message;
    if (m_quietStep == number)
        m_quietStep = 0;
    // An error may still be caught by the script; a failed check stays one.
    if (state == Step::Failed)
        reportFailure(number);
}

void StepRecorder::reportFailure(int number)
{
    ++m_progress.failures;
    Q_EMIT failed(step(number));
    Q_EMIT progressed(m_progress);
}

int StepRecorder::addFailure(int number, const QString &message, const Explanation &explanation)
{
    const int failure = static_cast<int>(m_failures.size()) + 1;
    m_failures.insert(failure, {number, explanation});
    if (number != 0) {
        step(number).explanation = explanation;
        end(number, Step::Broken, message);
    }
    return failure;
}

int StepRecorder::endByError(const QString &message, const QString &stack, int failure)
{
    const Failure known = m_failures.value(failure);
    int number = known.step;
    if (number == 0) {
        m_quietStep = 0;
        number = begin(Step::Problem, QString(), stack);
        step(number).explanation = known.explanation;
        end(number, Step::Broken, message);
    }
    markCaught(number);
    m_result.message = message;
    reportFailure(number);
    return number;
}

void StepRecorder::endWell()
{
    markCaught(0);
    m_progress.linesDone = m_progress.lineCount;
    m_progress.source.clear();
    Q_EMIT progressed(m_progress);
}

void StepRecorder::markCaught(int exceptStep)
{
    for (Step &step : m_result.steps) {
        if (step.state == Step::Broken && step.number != exceptStep)
            step.state = Step::Caught;
    }
}

void StepRecorder::log(bool isWarning, const QString &text)
{
    if (m_openStep == 0)
        m_result.log.append({isWarning, text});
    else
        step(m_openStep).log.append({isWarning, text});
}

QString StepRecorder::directory() const
{
    return QFileInfo(m_path).path();
}

void StepRecorder::place(Step *step, const QString &stack)
{
    QList<Position> positions = positionsOfStack(stack);
    if (positions.isEmpty())
        positions.append({m_path, 0, 0});
    // Of the script itself the engine was given other lines than those of the file.
    const int engineLine = positions.first().file == m_path ? positions.first().line : 0;
    for (Position &position : positions) {
        if (position.file == m_path)
            position.line = position.line == 0 ? m_importLine : sourceOf(m_path).placeOf(position.line).line;
    }
    step->position = positions.first();
    step->callers = positions.mid(1);
    const ScriptSource &source = sourceOf(step->position.file);
    const int from = engineLine > 0 ? source.placeOf(engineLine).column : 1;
    step->source = source.statementAt(step->position.line, from);
    if (!source.line(step->position.line).isEmpty())
        step->position.column = source.columnOfCall(step->position.line, step->function, from);
    reportProgress(positions, step->source);
}

const ScriptSource &StepRecorder::sourceOf(const QString &path)
{
    auto found = m_sources.find(path);
    if (found == m_sources.end()) {
        QString error;
        found = m_sources.insert(path, ScriptSource::read(path, &error).value_or(ScriptSource()));
    }
    return *found;
}

void StepRecorder::reportProgress(const QList<Position> &stack, const QString &source)
{
    // Where the script itself stands, whatever module it is calling.
    const auto own = std::find_if(stack.crbegin(), stack.crend(),
                                  [this](const Position &position) { return position.file == m_path; });
    if (own != stack.crend())
        m_progress.linesDone = std::max(m_progress.linesDone, sourceOf(m_path).codeLinesUpTo(own->line) - 1);
    ++m_progress.steps;
    m_progress.source = source.section(QLatin1Char('\n'), 0, 0);
    Q_EMIT progressed(m_progress);
}

} // namespace Vantle::Tool::Replay
