#include "tool/nearesttext.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace Vantle::Tool {

namespace {

constexpr qsizetype lettersForAnError = 3;

/// How many letters have to be put in, taken out or replaced.
qsizetype editDistance(const QString &one, const QString &other)
{
    std::vector<qsizetype> row(static_cast<std::size_t>(other.size()) + 1);
    for (std::size_t i = 0; i < row.size(); ++i)
        row[i] = static_cast<qsizetype>(i);
    for (qsizetype i = 0; i < one.size(); ++i) {
        qsizetype diagonal = std::exchange(row[0], i + 1);
        for (std::size_t j = 1; j < row.size(); ++j) {
            const bool same = one[i] == other[static_cast<qsizetype>(j) - 1];
            diagonal = std::exchange(row[j], std::min({diagonal + (same ? 0 : 1), row[j] + 1, row[j - 1] + 1}));
        }
    }
    return row.back();
}

} // namespace

QString nearestText(const QString &text, const QStringList &texts)
{
    const QString wanted = text.toLower();
    QString nearest;
    qsizetype least = text.size() / lettersForAnError + 1;
    for (const QString &candidate : texts) {
        const qsizetype distance = editDistance(wanted, candidate.toLower());
        if (distance < least) {
            least = distance;
            nearest = candidate;
        }
    }
    return nearest;
}

} // namespace Vantle::Tool
