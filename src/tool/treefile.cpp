#include "tool/treefile.h"

#include <QtCore/QJsonDocument>
#include <QtCore/QSaveFile>

namespace Vantle::Tool {

QString writeTreeFile(const QString &file, const QJsonObject &tree)
{
    QSaveFile target(file);
    const QByteArray text = QJsonDocument(tree).toJson();
    if (target.open(QIODevice::WriteOnly) && target.write(text) == text.size() && target.commit())
        return QString();
    return QStringLiteral("cannot write the objects to \"%1\": %2").arg(file, target.errorString());
}

} // namespace Vantle::Tool
