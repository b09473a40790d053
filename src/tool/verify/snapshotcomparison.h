#pragma once

#include <QtCore/QJsonObject>
#include <QtCore/QString>
#include <QtCore/QStringList>

namespace Vantle::Tool::Verify {

/// What differs between two snapshots of a program.
struct SnapshotDifferences
{
    int objects = 0; ///< how many were compared
    int pictures = 0;
    QStringList lines; ///< each difference in words

    bool isNone() const { return lines.isEmpty(); }
};

/// Holds the answers of two programs to `snapshot` against each other, object by
/// object, by their names, and window by window.
///
/// Scripts count in whole pixels: places and sizes count as the same if they are
/// no more than a pixel apart. Other numbers have to agree in six digits, all else
/// wholly. A picture may be off by a little in each colour, and in a few pixels
/// by more.
///
/// What differs between two snapshots of the recorded program itself, \p recorded
/// and \p later, changes by itself and is not compared.
SnapshotDifferences compareSnapshots(const QJsonObject &recorded, const QJsonObject &later,
                                     const QJsonObject &replayed);

} // namespace Vantle::Tool::Verify
