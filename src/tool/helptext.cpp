#include "tool/helptext.h"

#include <algorithm>

namespace Vantle::Tool {

namespace {

const Option helpOption{QLatin1Char('h'), QStringLiteral("help"), QString(), QStringLiteral("Show this help.")};

QString optionHelp(const Option &option)
{
    QString head = option.shortName.isNull() ? QString() : QStringLiteral("-%1, ").arg(option.shortName);
    head += QStringLiteral("--") + option.longName;
    if (!option.valueName.isEmpty())
        head += QLatin1Char(' ') + option.valueName;
    const QString indent = QStringLiteral("\n        ");
    return QStringLiteral("  ") + head + indent + QString(option.help).replace(QLatin1Char('\n'), indent)
        + QLatin1Char('\n');
}

QString twoColumns(const QList<QPair<QString, QString>> &rows)
{
    qsizetype width = 0;
    for (const auto &row : rows)
        width = std::max(width, row.first.size());
    QString text;
    for (const auto &[left, right] : rows)
        text += QStringLiteral("  ") + left.leftJustified(width + 2) + right + QLatin1Char('\n');
    return text;
}

} // namespace

QString generalHelp(const QList<Command> &commands)
{
    QList<QPair<QString, QString>> rows;
    for (const Command &command : commands)
        rows.append({command.name, command.summary});
    return QStringLiteral("Usage: vantle COMMAND [OPTIONS]\n"
                          "\n"
                          "Records what a user does in a Qt 6 program as a test script, and runs such\n"
                          "scripts. The program needs no change and no special build.\n"
                          "\n"
                          "Commands:\n")
        + twoColumns(rows)
        + QStringLiteral("\n"
                         "Options:\n")
        + twoColumns({{QStringLiteral("-h, --help"), QStringLiteral("Show this help.")},
                      {QStringLiteral("    --version"), QStringLiteral("Show the version.")}})
        + QStringLiteral("\n"
                         "\"vantle COMMAND --help\" explains a command and gives examples.\n"
                         "\n"
                         "Exit codes: 0 all is well, 1 a check of a script failed, 2 the program under\n"
                         "test crashed, 3 the command failed; the message says why.\n");
}

QString commandHelp(const Command &command)
{
    QString text = QStringLiteral("Usage: vantle %1 %2\n\n%3\n\nOptions:\n")
                       .arg(command.name, command.usage, command.description);
    for (const Option &option : command.options)
        text += optionHelp(option);
    text += optionHelp(helpOption);
    text += QStringLiteral("\nExamples:\n");
    for (const QString &example : command.examples)
        text += QStringLiteral("  ") + example + QLatin1Char('\n');
    return text;
}

} // namespace Vantle::Tool
