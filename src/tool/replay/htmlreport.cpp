#include "tool/replay/htmlreport.h"

#include "tool/installation.h"
#include "tool/replay/htmlstep.h"
#include "tool/replay/resulttext.h"

#include <QtCore/QFile>

#include <algorithm>

namespace Vantle::Tool::Replay {

namespace {

QString resource(const char *name)
{
    QFile file(QStringLiteral(":/vantle/replay/") + QLatin1String(name));
    file.open(QIODevice::ReadOnly);
    return QString::fromUtf8(file.readAll());
}

bool hasPassed(const ScriptResult &result)
{
    return result.verdict == Verdict::Passed;
}

QString badge(const QString &text, bool passed)
{
    return QStringLiteral("<span class=\"badge %1\">%2</span>")
        .arg(passed ? QStringLiteral("passed") : QStringLiteral("failed"), htmlText(text));
}

QString overallBadge(const std::vector<ScriptResult> &results)
{
    const auto passed = std::count_if(results.cbegin(), results.cend(), hasPassed);
    const auto count = static_cast<qsizetype>(results.size());
    if (passed == count)
        return badge(count == 1 ? QStringLiteral("passed") : QStringLiteral("all passed"), true);
    const QString some = QStringLiteral("%1 of %2 failed").arg(count - passed).arg(count);
    return badge(count == 1 ? QStringLiteral("failed") : some, false);
}

QString facts(const std::vector<ScriptResult> &results)
{
    qsizetype steps = 0;
    qsizetype checks = 0;
    qint64 duration = 0;
    for (const ScriptResult &result : results) {
        steps += result.steps.size();
        checks += result.count(Step::Check);
        duration += result.duration;
    }
    QStringList parts{counted(static_cast<qsizetype>(results.size()), QStringLiteral("script")),
                      counted(steps, QStringLiteral("step")), counted(checks, QStringLiteral("check")),
                      durationText(duration)};
    if (!results.empty())
        parts.append(results.front().startedAt.toString(QStringLiteral("yyyy-MM-dd HH:mm")));
    return parts.join(QStringLiteral(" · "));
}

QString head(const QString &title)
{
    return QStringLiteral("<!DOCTYPE html>\n"
                          "<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\"/>\n"
                          "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\"/>\n"
                          "<meta name=\"color-scheme\" content=\"light dark\"/>\n"
                          "<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; img-src data:; "
                          "style-src 'unsafe-inline'; script-src 'unsafe-inline'\"/>\n"
                          "<meta name=\"generator\" content=\"vantle %1\"/>\n<title>%2</title>\n")
               .arg(toolVersion(), htmlText(title))
        + QStringLiteral("<style>/*<![CDATA[*/\n") + resource("report.css")
        + QStringLiteral("/*]]>*/</style>\n</head>\n");
}

QString toolbar()
{
    return QStringLiteral(
        "<div class=\"tools\">\n"
        "<label><input type=\"checkbox\" id=\"only-failures\"/> Failures only</label>\n"
        "<input type=\"search\" id=\"search\" placeholder=\"Find a statement\" aria-label=\"Find a statement\"/>\n"
        "<button type=\"button\" id=\"open-all\">Open all</button>\n"
        "<button type=\"button\" id=\"close-all\">Close all</button>\n"
        "<span class=\"keys\"><kbd>j</kbd> <kbd>k</kbd> step  <kbd>n</kbd> <kbd>p</kbd> failure  "
        "<kbd>f</kbd> filter  <kbd>/</kbd> find</span>\n"
        "</div>\n"
        "<noscript><p>Pictures and the filter need JavaScript.</p></noscript>\n");
}

QString programHtml(const ScriptResult &result)
{
    QString html;
    if (!result.log.isEmpty())
        html += logHtml(result.log);
    if (result.programOutput.trimmed().isEmpty())
        return html;
    return html
        + QStringLiteral(
              "<details class=\"output\"%1><summary>What the program printed</summary><pre>%2</pre></details>\n")
              .arg(result.verdict == Verdict::ProgramDied ? QStringLiteral(" open=\"open\"") : QString(),
                   htmlText(result.programOutput));
}

QString stepId(int script, const Step &step)
{
    return QStringLiteral("s%1-%2").arg(script + 1).arg(step.number);
}

/// What ended the script, with the way to where it did.
QString endingHtml(const ScriptResult &result, int index)
{
    const QString text = htmlText(result.message);
    const QList<Step> failures = result.failures();
    const bool isStep = !failures.isEmpty() && failures.last().state == Step::Broken;
    return isStep ? QStringLiteral("<a href=\"#%1\">%2</a>").arg(stepId(index, failures.last()), text) : text;
}

QString scriptHtml(const ScriptResult &result, int index)
{
    const bool passed = hasPassed(result);
    QString html = QStringLiteral(
                       "<section class=\"script %1\">\n<header><h2>%2</h2>%3<span class=\"facts\">%4</span></header>\n")
                       .arg(passed ? QStringLiteral("passed") : QStringLiteral("failed"), htmlText(result.file),
                            badge(verdictText(result.verdict), passed), htmlText(countsText(result)));
    if (!result.programWords.isEmpty())
        html += QStringLiteral("<p class=\"place\">%1</p>\n").arg(htmlText(result.programWords));
    if (!result.message.isEmpty())
        html += QStringLiteral("<p class=\"ending\">%1</p>\n").arg(endingHtml(result, index));
    if (!result.steps.isEmpty())
        html += QStringLiteral("<ol class=\"steps\">\n");
    for (const Step &step : result.steps)
        html += stepHtml(step, result.pictures, stepId(index, step));
    if (!result.steps.isEmpty())
        html += QStringLiteral("</ol>\n");
    return html + programHtml(result) + QStringLiteral("</section>\n");
}

/// All pictures once, as base64 by key.
QByteArray picturesJson(const std::vector<ScriptResult> &results)
{
    QHash<QString, QByteArray> pictures;
    for (const ScriptResult &result : results) {
        for (auto it = result.pictures.all().cbegin(); it != result.pictures.all().cend(); ++it)
            pictures.insert(it.key(), it->png);
    }
    QStringList keys = pictures.keys();
    keys.sort();
    QByteArray json = "{";
    for (const QString &key : std::as_const(keys)) {
        json += json.size() > 1 ? ",\n\"" : "\n\"";
        json += key.toLatin1() + "\":\"" + pictures.value(key).toBase64() + '"';
    }
    return json + "}";
}

QString viewer()
{
    return QStringLiteral(
        "<dialog id=\"viewer\" aria-labelledby=\"viewer-title\"><form method=\"dialog\" class=\"tools\">"
        "<span id=\"viewer-title\"></span><button>Close</button></form>"
        "<div id=\"viewed\"></div></dialog>\n");
}

} // namespace

QByteArray htmlReport(const std::vector<ScriptResult> &results)
{
    const QString title = results.size() == 1 ? QStringLiteral("Replay of ") + results.front().file
                                              : QStringLiteral("Replay of %1 scripts").arg(results.size());
    QString html = head(title)
        + QStringLiteral("<body>\n<header>\n<div class=\"title\"><h1>%1</h1>%2<span class=\"facts\">%3</span></div>\n")
              .arg(htmlText(title), overallBadge(results), htmlText(facts(results)))
        + toolbar() + QStringLiteral("</header>\n<main>\n");
    for (size_t i = 0; i < results.size(); ++i)
        html += scriptHtml(results.at(i), static_cast<int>(i));
    html +=
        QStringLiteral(
            "<p id=\"nothing\" class=\"nothing\" hidden=\"hidden\">Nothing fits. <kbd>f</kbd> shows all steps again.</p>\n"
            "</main>\n")
        + viewer();
    QByteArray bytes = html.toUtf8();
    bytes += "<script type=\"application/json\" id=\"pictures\">" + picturesJson(results) + "</script>\n";
    bytes += "<script>//<![CDATA[\n" + resource("report.js").toUtf8() + "//]]></script>\n</body>\n</html>\n";
    return bytes;
}

} // namespace Vantle::Tool::Replay
