#include "hook/objectname.h"

#include <gtest/gtest.h>

#include <QtCore/QFile>
#include <QtCore/QRegularExpression>
#include <QtCore/QStringList>

using Vantle::ObjectName;

namespace {

/// The lines of one section of the page that tells users about names.
QStringList section(const QString &title)
{
    QFile file(QStringLiteral(VANTLE_DOCS_DIR "/names.md"));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << qPrintable(file.fileName());
    const QString text = QString::fromUtf8(file.readAll());
    const qsizetype start = text.indexOf(QStringLiteral("\n## %1\n").arg(title));
    EXPECT_GE(start, 0) << qPrintable(title);
    const QString rest = text.mid(start + 4);
    return rest.left(rest.indexOf(QLatin1String("\n## "))).split(u'\n');
}

TEST(NamesDocument, showsCanonicalNamesAsExamples)
{
    int examples = 0;
    for (const QString &line : section(QStringLiteral("Examples"))) {
        if (!line.startsWith(QLatin1String("| `")))
            continue;
        const QString text = line.section(u'`', 1, 1);
        ObjectName::ParseError error;
        const ObjectName name = ObjectName::parse(text, &error);
        EXPECT_FALSE(static_cast<bool>(error)) << qPrintable(text) << ": " << qPrintable(error.message);
        EXPECT_EQ(name.qualifiedName(), text);
        ++examples;
    }
    EXPECT_GE(examples, 5);
}

TEST(NamesDocument, quotesTheMessagesThatUsersGet)
{
    const QRegularExpression pattern(QStringLiteral("^    (\\S+) +column (\\d+): (.+)$"));
    int mistakes = 0;
    for (const QString &line : section(QStringLiteral("Mistakes"))) {
        const QRegularExpressionMatch match = pattern.match(line);
        if (!match.hasMatch())
            continue;
        ObjectName::ParseError error;
        ObjectName::parse(match.captured(1), &error);
        EXPECT_EQ(QString::number(error.column), match.captured(2)) << qPrintable(line);
        EXPECT_EQ(error.message, match.captured(3)) << qPrintable(line);
        ++mistakes;
    }
    EXPECT_GE(mistakes, 3);
}

} // namespace
