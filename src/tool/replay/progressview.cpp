#include "tool/replay/progressview.h"

#include "tool/console.h"
#include "tool/replay/resulttext.h"

#include <algorithm>

#include <sys/ioctl.h>
#include <unistd.h>

namespace Vantle::Tool::Replay {

namespace {

constexpr std::chrono::milliseconds redrawInterval(100);
constexpr int barWidth = 20;
constexpr qsizetype outputLines = 20;

bool isTerminal()
{
    return ::isatty(STDOUT_FILENO) && qgetenv("TERM") != "dumb";
}

qsizetype terminalWidth()
{
    struct winsize size = {};
    const bool known = ::ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0;
    return known ? size.ws_col : 80;
}

QString clockText(qint64 milliseconds)
{
    const qint64 seconds = milliseconds / 1000;
    return QStringLiteral("%1:%2").arg(seconds / 60).arg(seconds % 60, 2, 10, QLatin1Char('0'));
}

QString summary(const std::vector<ScriptResult> &results, qint64 duration)
{
    const auto with = [&](Verdict verdict) {
        return std::count_if(results.cbegin(), results.cend(),
                             [&](const ScriptResult &result) { return result.verdict == verdict; });
    };
    QStringList parts;
    for (const Verdict verdict : {Verdict::Passed, Verdict::Failed, Verdict::ProgramDied, Verdict::NotRun}) {
        if (const auto count = with(verdict))
            parts.append(QStringLiteral("%1 %2").arg(count).arg(verdictText(verdict)));
    }
    return QStringLiteral("%1: %2; %3")
        .arg(counted(static_cast<qsizetype>(results.size()), QStringLiteral("script")),
             parts.join(QStringLiteral(", ")), durationText(duration));
}

} // namespace

ProgressView::ProgressView(const QStringList &scripts, QObject *parent)
    : QObject(parent)
    , m_scripts(scripts)
    , m_isTerminal(isTerminal())
    , m_hasColours(m_isTerminal && qEnvironmentVariableIsEmpty("NO_COLOR"))
{
    connect(&m_timer, &QTimer::timeout, this, &ProgressView::redraw);
    if (m_isTerminal)
        m_timer.start(redrawInterval);
}

void ProgressView::begin(int index)
{
    m_running[index].clock.start();
    if (!m_isTerminal)
        say({QStringLiteral("%1: started").arg(m_scripts.at(index))});
}

void ProgressView::update(int index, const Progress &progress)
{
    const auto running = m_running.find(index);
    if (running != m_running.end())
        running->progress = progress;
}

void ProgressView::showFailure(int, const Step &step)
{
    QStringList lines = failureLines(step);
    std::transform(lines.cbegin(), lines.cend(), lines.begin(), Console::visible);
    lines.first() = coloured(QStringLiteral("failed: "), Red) + lines.first();
    say(lines);
}

void ProgressView::end(int index, const ScriptResult &result)
{
    m_running.remove(index);
    const Colour colour = result.verdict == Verdict::Passed ? Green : Red;
    QStringList lines{
        QStringLiteral("%1: %2: %3")
            .arg(Console::visible(result.file), coloured(verdictText(result.verdict), colour), countsText(result))};
    // What ended the script by an error was shown with its place.
    const bool isShown = result.verdict == Verdict::Passed || result.verdict == Verdict::Failed;
    if (!isShown)
        lines += QStringLiteral("  ") + Console::visible(result.message);
    const QStringList output = lastLines(result.programOutput, outputLines);
    if (!isShown && !output.isEmpty()) {
        lines.append(QStringLiteral("  the program's last output:"));
        for (const QString &line : output)
            lines.append(coloured(QStringLiteral("  | "), Grey) + Console::visible(line));
    }
    say(lines);
}

void ProgressView::showStopping()
{
    say({QStringLiteral("stopping; another Ctrl-C kills the program at once")});
}

void ProgressView::finish(const std::vector<ScriptResult> &results, qint64 duration)
{
    m_timer.stop();
    m_running.clear();
    if (results.size() > 1)
        say({summary(results, duration)});
}

void ProgressView::say(const QStringList &lines)
{
    QString text = eraseText();
    m_shownLines = 0;
    for (const QString &line : lines)
        text += line + QLatin1Char('\n');
    Console::print(text);
    if (m_isTerminal)
        redraw();
}

void ProgressView::redraw()
{
    const qsizetype width = terminalWidth();
    QString text = eraseText();
    for (auto it = m_running.cbegin(); it != m_running.cend(); ++it)
        text += barLine(it.key(), *it, width) + QLatin1Char('\n');
    m_shownLines = m_running.size();
    if (!text.isEmpty())
        Console::print(text);
}

QString ProgressView::eraseText() const
{
    // To the first of the lines that change, and everything from there away.
    return m_shownLines == 0 ? QString() : QStringLiteral("\x1b[%1F\x1b[J").arg(m_shownLines);
}

QString ProgressView::barLine(int index, const Running &running, qsizetype width) const
{
    const Progress &progress = running.progress;
    const int lineCount = std::max(1, progress.lineCount);
    const int done = std::clamp(barWidth * progress.linesDone / lineCount, 0, barWidth);
    const QString bar = QString(done, QChar(0x2588)) + QString(barWidth - done, QChar(0x2591));
    const QString failed = progress.failures > 0 ? QStringLiteral("%1 failed  ").arg(progress.failures) : QString();
    const QString head = QStringLiteral("%1  %2  %3  %4  ")
                             .arg(Console::visible(m_scripts.at(index)), bar, clockText(running.clock.elapsed()),
                                  counted(progress.steps, QStringLiteral("step")));
    const qsizetype room = width - 1 - head.size() - failed.size();
    // A line that is broken could not be taken away again.
    if (room < 0)
        return (head + failed).left(width - 1);
    return head + coloured(failed, Red) + coloured(Console::visible(progress.source).left(room), Grey);
}

QString ProgressView::coloured(const QString &text, Colour colour) const
{
    return m_hasColours && !text.isEmpty() ? QStringLiteral("\x1b[%1m%2\x1b[0m").arg(colour).arg(text) : text;
}

} // namespace Vantle::Tool::Replay
