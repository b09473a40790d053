#include "tool/arguments.h"

#include <algorithm>

namespace Vantle::Tool {

Arguments::Arguments(const Command &command, const QStringList &words) : m_command(command)
{
    read(words);
    if (m_wantsHelp || !m_error.isEmpty())
        return;
    if (m_command.takesFiles) {
        if (m_fileWords.isEmpty())
            fail(QStringLiteral("the name of a file is missing ahead of \"--\""));
        else if (!m_programWords.isEmpty() && m_programWords.first().isEmpty())
            fail(QStringLiteral("the program to start is missing"));
    } else if (m_command.takesProgram && (m_programWords.isEmpty() || m_programWords.first().isEmpty())) {
        fail(QStringLiteral("the program to start is missing"));
    } else if (!m_command.takesProgram && !m_programWords.isEmpty()) {
        fail(QStringLiteral("unexpected argument \"%1\"").arg(m_programWords.first()));
    }
}

void Arguments::read(const QStringList &words)
{
    qsizetype i = 0;
    while (i < words.size() && m_error.isEmpty()) {
        const QString &word = words.at(i);
        if (word == QLatin1String("--")) {
            ++i;
            break;
        }
        if (word.size() < 2 || !word.startsWith(QLatin1Char('-'))) {
            if (!m_command.takesFiles)
                break;
            m_fileWords.append(word);
            ++i;
            continue;
        }
        if (word == QLatin1String("--help") || word == QLatin1String("-h")) {
            m_wantsHelp = true;
            return;
        }
        i = takeOption(words, i);
    }
    m_programWords = words.mid(i);
}

qsizetype Arguments::takeOption(const QStringList &words, qsizetype index)
{
    const QString &word = words.at(index);
    if (!word.startsWith(QLatin1String("--"))) {
        const QString shown = word.first(2);
        if (const Option *option = shortOption(word.at(1)))
            return takeValue(*option, shown, word.mid(2), word.size() > 2, words, index);
        fail(QStringLiteral("unknown option \"%1\"").arg(shown));
        return index;
    }
    const qsizetype equals = word.indexOf(QLatin1Char('='));
    const QString shown = equals < 0 ? word : word.first(equals);
    if (const Option *option = longOption(shown.mid(2)))
        return takeValue(*option, shown, equals < 0 ? QString() : word.mid(equals + 1), equals >= 0, words, index);
    fail(QStringLiteral("unknown option \"%1\"").arg(shown));
    return index;
}

qsizetype Arguments::takeValue(const Option &option, const QString &shown, const QString &attached, bool isAttached,
                               const QStringList &words, qsizetype index)
{
    QString value = attached;
    qsizetype behind = index + 1;
    if (option.valueName.isEmpty()) {
        if (isAttached)
            fail(QStringLiteral("option \"%1\" takes no value").arg(shown));
    } else if (!isAttached) {
        if (behind >= words.size() || words.at(behind) == QLatin1String("--"))
            fail(QStringLiteral("option \"%1\" needs a value: %2").arg(shown, option.valueName));
        value = words.value(behind);
        ++behind;
    }
    if (!option.repeatable && m_values.contains(option.longName))
        fail(QStringLiteral("option \"%1\" was given twice").arg(shown));
    m_values[option.longName].append(value);
    return behind;
}

const Option *Arguments::longOption(const QString &name) const
{
    const auto found = std::find_if(m_command.options.cbegin(), m_command.options.cend(),
                                    [&](const Option &option) { return option.longName == name; });
    return found == m_command.options.cend() ? nullptr : &*found;
}

const Option *Arguments::shortOption(QChar name) const
{
    const auto found = std::find_if(m_command.options.cbegin(), m_command.options.cend(),
                                    [&](const Option &option) { return option.shortName == name; });
    return found == m_command.options.cend() ? nullptr : &*found;
}

void Arguments::fail(const QString &error)
{
    if (m_error.isEmpty())
        m_error = error;
}

} // namespace Vantle::Tool
