#include "tool/treefile.h"

#include "tool/outputfile.h"

#include <QtCore/QJsonDocument>

namespace Vantle::Tool {

QString writeTreeFile(const QString &file, const QJsonObject &tree)
{
    return writeOutput(file, QJsonDocument(tree).toJson());
}

} // namespace Vantle::Tool
