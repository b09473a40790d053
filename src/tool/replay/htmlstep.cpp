#include "tool/replay/htmlstep.h"

#include "tool/replay/resulttext.h"
#include "tool/replay/stacktrace.h"

namespace Vantle::Tool::Replay {

namespace {

QString className(Step::State state)
{
    switch (state) {
    case Step::Running: return QStringLiteral("running");
    case Step::Passed: return QStringLiteral("passed");
    case Step::Failed: return QStringLiteral("failed");
    case Step::Broken: return QStringLiteral("broken");
    case Step::Caught: return QStringLiteral("caught");
    }
    return QString();
}

/// A sign that can be told apart without its colour, and its name.
QString signHtml(const Step &step)
{
    const auto sign = [](QChar text, const char *name) {
        return QStringLiteral("<span class=\"sign\" role=\"img\" aria-label=\"%1\" title=\"%1\">%2</span>")
            .arg(QLatin1String(name))
            .arg(text);
    };
    switch (step.state) {
    case Step::Passed:
        return step.kind == Step::Message ? sign(QLatin1Char('i'), "message") : sign(QChar(0x2713), "passed");
    case Step::Failed: return sign(QChar(0x2717), "failed");
    case Step::Broken: return sign(QLatin1Char('!'), "error");
    case Step::Caught: return sign(QLatin1Char('~'), "error, caught by the script");
    case Step::Running: break;
    }
    return sign(QChar(0x2026), "not finished");
}

QString summaryMessage(const Step &step)
{
    if (step.kind == Step::Message && !step.log.isEmpty())
        return step.log.first().text;
    return step.message;
}

QString summaryHtml(const Step &step)
{
    const QString statement = step.statement().isEmpty() ? positionText(step.position) : step.statement();
    QString html = QStringLiteral("<summary><span class=\"number\">%1</span>%2<code class=\"statement\">%3</code>"
                                  "<span class=\"time\">%4</span>")
                       .arg(QString::number(step.number), signHtml(step), htmlText(statement),
                            durationText(step.duration));
    const QString message = summaryMessage(step);
    if (!message.isEmpty())
        html += QStringLiteral("<span class=\"said\">%1</span>").arg(htmlText(message));
    return html + QStringLiteral("</summary>\n");
}

QString differencesHtml(const QList<Protocol::Difference> &differences, const QString &caption)
{
    if (differences.isEmpty())
        return QString();
    QString html = QStringLiteral("<div class=\"scroll\"><table>");
    if (!caption.isEmpty())
        html += QStringLiteral("<caption>%1</caption>").arg(htmlText(caption));
    html += QStringLiteral("<thead><tr><th scope=\"col\">Property</th><th scope=\"col\">Expected</th>"
                           "<th scope=\"col\">Found</th></tr></thead><tbody>");
    for (const Protocol::Difference &difference : differences) {
        html += QStringLiteral("<tr><td><code>%1</code></td><td><code>%2</code></td><td><code>%3</code></td></tr>")
                    .arg(htmlText(difference.key), htmlText(difference.expected), htmlText(difference.found));
    }
    return html + QStringLiteral("</tbody></table></div>\n");
}

QString termHtml(const QString &term, const QString &value)
{
    return value.isEmpty() ? QString()
                           : QStringLiteral("<dt>%1</dt><dd><code>%2</code></dd>").arg(term, htmlText(value));
}

QString explanationHtml(const Explanation &explanation)
{
    if (explanation.isEmpty())
        return QString();
    QString html = QStringLiteral("<dl>") + termHtml(QStringLiteral("Looked for"), explanation.lookedFor)
        + termHtml(QStringLiteral("Reason"), explanation.reason)
        + termHtml(QStringLiteral("Covered by"), explanation.coveredBy) + QStringLiteral("</dl>\n");
    for (const Protocol::Candidate &candidate : explanation.candidates) {
        const QString caption = QStringLiteral("%1 (%2)").arg(candidate.name, candidate.className);
        html += candidate.differences.isEmpty()
            ? QStringLiteral("<p class=\"reason\">%1</p>\n").arg(htmlText(caption))
            : differencesHtml(candidate.differences, QStringLiteral("Nearly: ") + caption);
    }
    return html;
}

QString placesHtml(const Step &step)
{
    QString html = QStringLiteral("<div class=\"place\">%1").arg(htmlText(positionText(step.position)));
    if (!step.call.isEmpty())
        html += QStringLiteral(": <code>%1</code>").arg(htmlText(step.source));
    for (const Position &caller : step.callers)
        html += QStringLiteral("<br/>called from %1").arg(htmlText(positionText(caller)));
    return html + QStringLiteral("</div>\n");
}

/// The mark at the point of action, placed in parts of the picture.
QString pointHtml(const QPointF &point, const QSizeF &size)
{
    const auto percent = [](double part, double whole) { return QString::number(100 * part / whole, 'f', 2); };
    return QStringLiteral("<span class=\"point\" style=\"left:%1%;top:%2%\"></span>")
        .arg(percent(point.x(), size.width()), percent(point.y(), size.height()));
}

QString pictureHtml(const QString &caption, const QString &key, const PictureStore &pictures,
                    const std::optional<QPointF> &point = std::nullopt)
{
    const Picture *picture = pictures.find(key);
    if (!picture)
        return QString();
    return QStringLiteral(
               "<figure><button type=\"button\" class=\"picture\" aria-label=\"%1\">"
               "<span class=\"frame\" data-picture=\"%2\"><img alt=\"%1\" width=\"%3\" height=\"%4\"/>%5</span>"
               "</button><figcaption>%1</figcaption></figure>\n")
        .arg(caption, key, QString::number(qRound(picture->size.width())),
             QString::number(qRound(picture->size.height())), point ? pointHtml(*point, picture->size) : QString());
}

QString picturesHtml(const Step &step, const PictureStore &pictures)
{
    const bool isComparison = !step.kept.isEmpty() || !step.difference.isEmpty();
    const bool isAction = !step.before.isEmpty();
    const QString after = isComparison ? QStringLiteral("Found") : QStringLiteral("After");
    const QString only = step.state == Step::Passed ? QStringLiteral("Picture") : QStringLiteral("At the failure");
    const QString html = pictureHtml(QStringLiteral("Before"), step.before, pictures, step.point)
        + pictureHtml(isAction || isComparison ? after : only, step.after, pictures)
        + pictureHtml(QStringLiteral("Kept"), step.kept, pictures)
        + pictureHtml(QStringLiteral("Difference"), step.difference, pictures);
    return html.isEmpty() ? QString() : QStringLiteral("<div class=\"pictures\">\n%1</div>\n").arg(html);
}

} // namespace

QString htmlText(const QString &text)
{
    return documentText(text).toHtmlEscaped();
}

QString logHtml(const QList<LogLine> &log)
{
    if (log.isEmpty())
        return QString();
    QString html = QStringLiteral("<pre class=\"log\">");
    for (const LogLine &line : log) {
        const QString text = htmlText(line.text);
        html += line.isWarning ? QStringLiteral("<span class=\"warning\">%1</span>\n").arg(text)
                               : text + QLatin1Char('\n');
    }
    return html + QStringLiteral("</pre>\n");
}

QString stepHtml(const Step &step, const PictureStore &pictures, const QString &id)
{
    const bool isOpen = step.state == Step::Failed || step.state == Step::Broken;
    const QString state = step.kind == Step::Message ? QStringLiteral("message") : className(step.state);
    return QStringLiteral("<li class=\"step %1\" id=\"%2\"><details%3>")
               .arg(state, id, isOpen ? QStringLiteral(" open=\"open\"") : QString())
        + summaryHtml(step) + QStringLiteral("<div class=\"body\">\n") + placesHtml(step)
        + explanationHtml(step.explanation) + differencesHtml(step.values, QString()) + logHtml(step.log)
        + picturesHtml(step, pictures) + QStringLiteral("</div></details></li>\n");
}

} // namespace Vantle::Tool::Replay
