#include "tool/inspect/inspecttext.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QStringList>

#include <algorithm>

namespace Vantle::Tool::Inspect {

namespace {

// A reason may be a long sentence; beyond this it pushes its own line only.
constexpr qsizetype widestColumn = 46;

/// Rows of equally many cells, so that the cells of a column begin below each other.
class Columns
{
public:
    void add(const QStringList &cells)
    {
        for (qsizetype i = 0; i < cells.size(); ++i) {
            if (i == m_widths.size())
                m_widths.append(0);
            m_widths[i] = std::max(m_widths.at(i), std::min(cells.at(i).size(), widestColumn));
        }
        m_rows.append(cells);
    }

    QString text(const QString &indentation = QString()) const
    {
        QString text;
        for (const QStringList &row : m_rows) {
            QString line = indentation;
            for (qsizetype i = 0; i < row.size(); ++i)
                line += i + 1 < row.size() ? row.at(i).leftJustified(m_widths.at(i)) + QStringLiteral("  ") : row.at(i);
            text += line + QLatin1Char('\n');
        }
        return text;
    }

private:
    QList<QStringList> m_rows;
    QList<qsizetype> m_widths;
};

QString placeText(const QRect &rect)
{
    if (rect.width() < 0 || rect.height() < 0)
        return QStringLiteral("nowhere");
    return QStringLiteral("%1x%2 at (%3, %4)").arg(rect.width()).arg(rect.height()).arg(rect.x()).arg(rect.y());
}

QString readinessText(const QString &notReady)
{
    return notReady.isEmpty() ? QStringLiteral("ready") : notReady;
}

QString nameText(const QString &name)
{
    return name.isEmpty() ? QStringLiteral("(no name)") : name;
}

void addNode(Columns *columns, const Protocol::TreeNode &node, int depth)
{
    columns->add({QString(2 * depth, QLatin1Char(' ')) + node.type, placeText(node.geometry),
                  readinessText(node.notReady), nameText(node.name)});
    for (const Protocol::TreeNode &child : node.children)
        addNode(columns, child, depth + 1);
}

QString inOneLine(const QJsonValue &value)
{
    const QByteArray array = QJsonDocument(QJsonArray{value}).toJson(QJsonDocument::Compact);
    return QString::fromUtf8(array.sliced(1, array.size() - 2));
}

QString numberText(double number)
{
    return QString::number(number, 'g', 10);
}

/// A value that tells its type, in the form in which people write it.
QString typedText(const QJsonObject &value)
{
    const QString type = value.value(QStringLiteral("type")).toString();
    const auto number = [&](const char *key) { return numberText(value.value(QLatin1String(key)).toDouble()); };
    if (type == QLatin1String("QPointF"))
        return QStringLiteral("(%1, %2)").arg(number("x"), number("y"));
    if (type == QLatin1String("QSizeF"))
        return QStringLiteral("%1x%2").arg(number("width"), number("height"));
    if (type == QLatin1String("QRectF"))
        return QStringLiteral("%1x%2 at (%3, %4)").arg(number("width"), number("height"), number("x"), number("y"));
    if (type == QLatin1String("map"))
        return inOneLine(value.value(QStringLiteral("value")));
    if (type == QLatin1String("QPixmap"))
        return QStringLiteral("picture of %1x%2").arg(number("width"), number("height"));
    const QString text = value.value(QStringLiteral("text")).toString();
    return text.isEmpty()
        ? type
        : QStringLiteral("%1 (%2)").arg(QString(text).replace(QLatin1Char('\n'), QStringLiteral("\\n")), type);
}

// How many of the items that a click may mean are only told apart by counting.
QString countedText(const QJsonObject &result)
{
    const int pressable = result.value(QStringLiteral("pressable")).toInt();
    const QJsonArray counted = result.value(QStringLiteral("counted")).toArray();
    if (pressable == 0)
        return {};
    const double share = 100.0 * static_cast<double>(counted.size()) / pressable;
    QString text = QStringLiteral("%1 of %2 items that take presses are named by :nth (%3 %).\n")
                       .arg(QString::number(counted.size()), QString::number(pressable),
                            QString::number(share, 'f', 1));
    for (const QJsonValue &name : counted)
        text += QStringLiteral("  %1\n").arg(nameText(name.toString()));
    return text;
}

} // namespace

QString treeText(const QList<Protocol::TreeNode> &windows)
{
    Columns columns;
    for (const Protocol::TreeNode &window : windows)
        addNode(&columns, window, 0);
    return columns.text();
}

QString objectText(const Protocol::Description &description, const QJsonObject &properties)
{
    Columns head;
    head.add({QStringLiteral("name"), nameText(description.name)});
    head.add({QStringLiteral("class"), description.className});
    head.add({QStringLiteral("place"), placeText(description.geometry)});
    head.add({QStringLiteral("readiness"), readinessText(description.notReady)});
    Columns values;
    for (auto property = properties.begin(); property != properties.end(); ++property)
        values.add({property.key(), valueText(property.value())});
    return head.text() + QLatin1Char('\n') + values.text();
}

QString functionsText(QList<Protocol::FunctionDescription> functions)
{
    std::sort(functions.begin(), functions.end(),
              [](const auto &one, const auto &other) { return one.name.compare(other.name, Qt::CaseInsensitive) < 0; });
    QString text;
    for (const Protocol::FunctionDescription &function : std::as_const(functions)) {
        for (const Protocol::FunctionDescription::Overload &overload : function.overloads) {
            QStringList arguments;
            for (const Protocol::FunctionDescription::Argument &argument : overload.arguments)
                arguments.append(argument.name + QStringLiteral(": ") + argument.type);
            text += QStringLiteral("%1(%2)").arg(function.name, arguments.join(QStringLiteral(", ")));
            if (overload.result != QLatin1String("void"))
                text += QStringLiteral(": ") + overload.result;
            text += QLatin1Char('\n');
        }
    }
    return text;
}

QString notFoundText(const Protocol::NotFound &failure)
{
    if (failure.candidates.isEmpty())
        return QString();
    QString text = QStringLiteral("Closest to it:\n");
    for (const Protocol::Candidate &candidate : failure.candidates) {
        text += QStringLiteral("  %1 (%2)\n").arg(nameText(candidate.name), candidate.className);
        Columns columns;
        for (const Protocol::Difference &difference : candidate.differences) {
            columns.add(
                {difference.key, QStringLiteral("expected %1, found %2").arg(difference.expected, difference.found)});
        }
        text += columns.text(QStringLiteral("    "));
    }
    return text;
}

QString namesText(const QJsonObject &result)
{
    const int count = result.value(QStringLiteral("items")).toInt();
    const QJsonArray failures = result.value(QStringLiteral("failures")).toArray();
    QString text =
        QStringLiteral("%1 of %2 objects are found by their names.\n").arg(count - failures.size()).arg(count);
    for (const QJsonValue &value : failures) {
        text += QStringLiteral("  %1: %2\n")
                    .arg(nameText(value[QStringLiteral("name")].toString()),
                         value[QStringLiteral("reason")].toString());
    }
    return text + countedText(result);
}

QString valueText(const QJsonValue &value)
{
    if (value.isDouble())
        return numberText(value.toDouble());
    if (!value.isObject())
        return inOneLine(value);
    const QJsonObject object = value.toObject();
    if (!object.contains(QStringLiteral("object")))
        return typedText(object);
    const QString name = object.value(QStringLiteral("name")).toString();
    const QString className = object.value(QStringLiteral("class")).toString();
    return name.isEmpty() ? className : QStringLiteral("%1 (%2)").arg(name, className);
}

} // namespace Vantle::Tool::Inspect
