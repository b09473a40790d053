#include "tool/replay/explanation.h"

#include <algorithm>

namespace Vantle::Tool::Replay {

Explanation explanationOf(const Protocol::Error &error)
{
    Explanation result;
    const QJsonObject data = error.data.toObject();
    if (error.code == Protocol::ObjectNotFound || error.code == Protocol::AmbiguousName) {
        if (const auto notFound = Protocol::NotFound::fromJson(data)) {
            result.lookedFor = notFound->lookedFor;
            result.reason = notFound->reason;
            result.candidates = notFound->candidates;
        }
    } else if (error.code == Protocol::ObjectNotReady) {
        if (const auto notReady = Protocol::NotReady::fromJson(data)) {
            result.lookedFor = notReady->lookedFor;
            result.reason = notReady->reason;
            result.coveredBy = notReady->coveredBy;
        }
    }
    return result;
}

QStringList explanationLines(const Explanation &explanation)
{
    QStringList lines;
    if (!explanation.lookedFor.isEmpty())
        lines.append(QStringLiteral("looked for: ") + explanation.lookedFor);
    if (!explanation.reason.isEmpty())
        lines.append(QStringLiteral("reason:     ") + explanation.reason);
    if (!explanation.coveredBy.isEmpty())
        lines.append(QStringLiteral("covered by: ") + explanation.coveredBy);
    if (explanation.candidates.isEmpty())
        return lines;
    const Protocol::Candidate &closest = explanation.candidates.first();
    // It fits several: they differ in nothing that was looked for.
    if (closest.differences.isEmpty()) {
        for (const Protocol::Candidate &candidate : explanation.candidates)
            lines.append(QStringLiteral("one of:     %1 (%2)").arg(candidate.name, candidate.className));
        return lines;
    }
    lines.append(QStringLiteral("closest:    %1 (%2)").arg(closest.name, closest.className));
    const QStringList differences = differenceLines(closest.differences);
    for (const QString &line : differences)
        lines.append(QStringLiteral("            ") + line);
    return lines;
}

QStringList differenceLines(const QList<Protocol::Difference> &differences)
{
    qsizetype width = 0;
    for (const Protocol::Difference &difference : differences)
        width = std::max(width, difference.key.size());
    QStringList lines;
    for (const Protocol::Difference &difference : differences) {
        lines.append(QStringLiteral("%1  expected %2, found %3")
                         .arg(difference.key.leftJustified(width), difference.expected, difference.found));
    }
    return lines;
}

} // namespace Vantle::Tool::Replay
