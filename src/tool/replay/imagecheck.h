#pragma once

#include "tool/replay/picturecomparison.h"

namespace Vantle::Tool::Replay {

/// What came of holding a picture against one that was kept.
struct ImageCheck
{
    bool passed = false;
    QString message;
    QByteArray kept;       ///< PNG; empty if there was none
    QByteArray difference; ///< PNG; empty if there is none
};

/// Holds \p found (PNG) against the picture kept in \p file. If they differ,
/// what was found and the difference are written beside it, as
/// `name-found.png` and `name-difference.png`; if they don't, these are removed
/// again. With \p update the picture found is kept from now on instead.
ImageCheck checkImage(const QByteArray &found, const QString &file, const PictureTolerance &tolerance, bool update);

} // namespace Vantle::Tool::Replay
