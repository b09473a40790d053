#include "tool/replay/junitreport.h"

#include "tool/replay/resulttext.h"
#include "tool/replay/stacktrace.h"

#include <QtCore/QFileInfo>
#include <QtCore/QXmlStreamWriter>

#include <algorithm>
#include <optional>

namespace Vantle::Tool::Replay {

namespace {

/// One `<testcase>`.
struct Case
{
    QString name;
    qint64 duration = 0;
    QString element; ///< "failure", "error", or empty if it passed
    QString message;
    QString details;
    int line = 0;
};

QString seconds(qint64 milliseconds)
{
    return QString::number(static_cast<double>(milliseconds) / 1000.0, 'f', 3);
}

QString caseName(const Step &step)
{
    QString name = QStringLiteral("%1: %2").arg(step.position.line).arg(step.statement().simplified());
    if (!step.message.isEmpty() && step.state == Step::Passed)
        name += QStringLiteral(" — ") + step.message.simplified();
    return name;
}

Case caseOf(const Step &step)
{
    Case result{caseName(step), step.duration, {}, {}, {}, step.position.line};
    if (step.state == Step::Failed || step.state == Step::Broken) {
        const QStringList reasons = reasonLines(step);
        result.element = step.state == Step::Failed ? QStringLiteral("failure") : QStringLiteral("error");
        result.message = reasons.value(0);
        QStringList lines = failureLines(step);
        if (!step.pictureFile.isEmpty())
            lines.append(QStringLiteral("  picture: ") + step.pictureFile);
        result.details = lines.join(QLatin1Char('\n'));
    }
    return result;
}

/// The step whose error the script did not catch.
std::optional<Step> endingError(const ScriptResult &result)
{
    const auto found = std::find_if(result.steps.cbegin(), result.steps.cend(),
                                    [](const Step &step) { return step.state == Step::Broken; });
    return found == result.steps.cend() ? std::nullopt : std::optional(*found);
}

Case caseOfScript(const ScriptResult &result)
{
    Case whole{QStringLiteral("runs to its end"), result.duration, {}, {}, {}, 0};
    if (result.verdict == Verdict::ProgramDied || result.verdict == Verdict::NotRun) {
        whole.element = QStringLiteral("error");
        whole.message = result.message;
        whole.details = lastLines(result.programOutput, 50).join(QLatin1Char('\n'));
    } else if (const auto end = endingError(result)) {
        whole.element = QStringLiteral("error");
        whole.message = result.message;
        whole.details = QStringLiteral("ended by the error at ") + positionText(end->position);
    }
    return whole;
}

QList<Case> casesOf(const ScriptResult &result)
{
    QList<Case> cases{caseOfScript(result)};
    for (const Step &step : result.steps) {
        if (step.kind == Step::Check || step.state == Step::Broken)
            cases.append(caseOf(step));
    }
    return cases;
}

qsizetype countOf(const QList<Case> &cases, const char *element)
{
    return std::count_if(cases.cbegin(), cases.cend(),
                         [&](const Case &entry) { return entry.element == QLatin1String(element); });
}

void writeCase(QXmlStreamWriter *xml, const Case &entry, const ScriptResult &result)
{
    xml->writeStartElement(QStringLiteral("testcase"));
    xml->writeAttribute(QStringLiteral("classname"), documentText(QFileInfo(result.file).completeBaseName()));
    xml->writeAttribute(QStringLiteral("name"), documentText(entry.name));
    xml->writeAttribute(QStringLiteral("time"), seconds(entry.duration));
    xml->writeAttribute(QStringLiteral("file"), documentText(result.file));
    if (entry.line > 0)
        xml->writeAttribute(QStringLiteral("line"), QString::number(entry.line));
    if (!entry.element.isEmpty()) {
        xml->writeStartElement(entry.element);
        xml->writeAttribute(QStringLiteral("message"), documentText(entry.message));
        xml->writeCharacters(documentText(entry.details));
        xml->writeEndElement();
    }
    xml->writeEndElement();
}

QString messagesOf(const ScriptResult &result)
{
    QStringList lines;
    for (const Step &step : result.steps) {
        for (const LogLine &line : step.log)
            lines.append(line.text);
    }
    return lines.join(QLatin1Char('\n'));
}

void writeSuite(QXmlStreamWriter *xml, const ScriptResult &result)
{
    const QList<Case> cases = casesOf(result);
    xml->writeStartElement(QStringLiteral("testsuite"));
    xml->writeAttribute(QStringLiteral("name"), documentText(result.file));
    xml->writeAttribute(QStringLiteral("tests"), QString::number(cases.size()));
    xml->writeAttribute(QStringLiteral("failures"), QString::number(countOf(cases, "failure")));
    xml->writeAttribute(QStringLiteral("errors"), QString::number(countOf(cases, "error")));
    xml->writeAttribute(QStringLiteral("skipped"), QStringLiteral("0"));
    xml->writeAttribute(QStringLiteral("time"), seconds(result.duration));
    xml->writeAttribute(QStringLiteral("timestamp"), result.startedAt.toString(QStringLiteral("yyyy-MM-ddTHH:mm:ss")));
    for (const Case &entry : cases)
        writeCase(xml, entry, result);
    xml->writeTextElement(QStringLiteral("system-out"), documentText(messagesOf(result)));
    xml->writeTextElement(QStringLiteral("system-err"), documentText(result.programOutput));
    xml->writeEndElement();
}

} // namespace

QByteArray junitReport(const std::vector<ScriptResult> &results)
{
    QByteArray text;
    QXmlStreamWriter xml(&text);
    xml.setAutoFormatting(true);
    xml.setAutoFormattingIndent(2);
    xml.writeStartDocument();
    xml.writeStartElement(QStringLiteral("testsuites"));
    qsizetype tests = 0;
    qsizetype failures = 0;
    qsizetype errors = 0;
    qint64 duration = 0;
    for (const ScriptResult &result : results) {
        const QList<Case> cases = casesOf(result);
        tests += cases.size();
        failures += countOf(cases, "failure");
        errors += countOf(cases, "error");
        duration += result.duration;
    }
    xml.writeAttribute(QStringLiteral("name"), QStringLiteral("vantle replay"));
    xml.writeAttribute(QStringLiteral("tests"), QString::number(tests));
    xml.writeAttribute(QStringLiteral("failures"), QString::number(failures));
    xml.writeAttribute(QStringLiteral("errors"), QString::number(errors));
    xml.writeAttribute(QStringLiteral("time"), seconds(duration));
    for (const ScriptResult &result : results)
        writeSuite(&xml, result);
    xml.writeEndDocument();
    return text;
}

} // namespace Vantle::Tool::Replay
