#include "tool/replay/results.h"

#include <QtCore/QCryptographicHash>

#include <algorithm>

namespace Vantle::Tool::Replay {

QString PictureStore::add(const Picture &picture)
{
    if (picture.png.isEmpty())
        return QString();
    // Two windows may look the same.
    const QByteArray content = picture.png + QByteArray::number(picture.window);
    const QByteArray hash = QCryptographicHash::hash(content, QCryptographicHash::Sha1);
    const QString key = QString::fromLatin1(hash.toHex().first(16));
    m_pictures.insert(key, picture);
    return key;
}

const Picture *PictureStore::find(const QString &key) const
{
    const auto found = m_pictures.constFind(key);
    return found == m_pictures.cend() ? nullptr : &*found;
}

int ScriptResult::count(Step::Kind kind) const
{
    return static_cast<int>(
        std::count_if(steps.cbegin(), steps.cend(), [&](const Step &step) { return step.kind == kind; }));
}

int ScriptResult::count(Step::Kind kind, Step::State state) const
{
    return static_cast<int>(std::count_if(steps.cbegin(), steps.cend(),
                                          [&](const Step &step) { return step.kind == kind && step.state == state; }));
}

QList<Step> ScriptResult::failures() const
{
    QList<Step> result;
    std::copy_if(steps.cbegin(), steps.cend(), std::back_inserter(result),
                 [](const Step &step) { return step.state == Step::Failed || step.state == Step::Broken; });
    return result;
}

} // namespace Vantle::Tool::Replay
