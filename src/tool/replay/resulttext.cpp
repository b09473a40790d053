#include "tool/replay/resulttext.h"

#include "tool/replay/explanation.h"
#include "tool/replay/stacktrace.h"

#include <algorithm>

namespace Vantle::Tool::Replay {

QStringList failureLines(const Step &step)
{
    QStringList lines{positionText(step.position)};
    const QStringList source = step.statement().split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    for (const QString &line : source)
        lines.append(QStringLiteral("    ") + line);
    const QStringList reasons = reasonLines(step);
    for (const QString &line : reasons)
        lines.append(QStringLiteral("  ") + line);
    for (const Position &caller : step.callers)
        lines.append(QStringLiteral("  called from ") + positionText(caller));
    return lines;
}

QStringList reasonLines(const Step &step)
{
    QStringList lines = step.message.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    lines += explanationLines(step.explanation);
    lines += differenceLines(step.values);
    return lines;
}

QString verdictText(Verdict verdict)
{
    switch (verdict) {
    case Verdict::Passed: return QStringLiteral("passed");
    case Verdict::Failed: return QStringLiteral("failed");
    case Verdict::ProgramDied: return QStringLiteral("the program died");
    case Verdict::NotRun: return QStringLiteral("not run to its end");
    }
    return QString();
}

QString countsText(const ScriptResult &result)
{
    QStringList parts{counted(result.steps.size(), QStringLiteral("step")),
                      counted(result.count(Step::Check), QStringLiteral("check"))};
    const qsizetype failures = result.failures().size();
    if (failures > 0)
        parts.append(QStringLiteral("%1 failed").arg(failures));
    parts.append(durationText(result.duration));
    return parts.join(QStringLiteral(", "));
}

QString counted(qsizetype count, const QString &thing)
{
    return QStringLiteral("%1 %2%3").arg(count).arg(thing, count == 1 ? QString() : QStringLiteral("s"));
}

QString durationText(qint64 milliseconds)
{
    const double seconds = static_cast<double>(milliseconds) / 1000.0;
    if (milliseconds < 1000)
        return QStringLiteral("%1 ms").arg(milliseconds);
    if (seconds < 10)
        return QStringLiteral("%1 s").arg(seconds, 0, 'f', 2);
    if (seconds < 60)
        return QStringLiteral("%1 s").arg(seconds, 0, 'f', 1);
    const qint64 whole = milliseconds / 1000;
    return QStringLiteral("%1 min %2 s").arg(whole / 60).arg(whole % 60, 2, 10, QLatin1Char('0'));
}

QString documentText(const QString &text)
{
    // Through UTF-8, lone surrogates become the character for what is no character.
    QString result = QString::fromUtf8(text.toUtf8());
    result.removeIf([](QChar c) {
        const bool isControl = c.unicode() < 0x20 && c != QLatin1Char('\n') && c != QLatin1Char('\t');
        return isControl || c.unicode() == 0xfffe || c.unicode() == 0xffff;
    });
    return result;
}

QStringList lastLines(const QString &output, qsizetype count)
{
    const QStringList lines = output.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    return lines.mid(std::max<qsizetype>(0, lines.size() - count));
}

} // namespace Vantle::Tool::Replay
