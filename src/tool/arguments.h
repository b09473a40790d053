#pragma once

#include "tool/command.h"

#include <QtCore/QHash>
#include <QtCore/QStringList>

namespace Vantle::Tool {

/// What stood on the command line behind the name of a command.
///
/// Options come as `--name VALUE`, `--name=VALUE`, `-n VALUE` or `-nVALUE`.
/// They end at `--` or at the first word that is no option, since what follows
/// belongs to the program under test. For a command that takes files they end at
/// `--` only, and may stand between the files.
class Arguments
{
public:
    /// Reads \p words by the options of \p command. If something is wrong,
    /// errorString() says what.
    Arguments(const Command &command, const QStringList &words);

    /// Empty if everything was fine.
    QString errorString() const { return m_error; }

    /// True if the help was asked for; then nothing else was checked.
    bool wantsHelp() const { return m_wantsHelp; }

    bool has(const QString &longName) const { return m_values.contains(longName); }

    /// The value of an option that came once; empty if it did not come.
    QString value(const QString &longName) const { return m_values.value(longName).value(0); }

    /// All values of an option that can be repeated, in order.
    QStringList values(const QString &longName) const { return m_values.value(longName); }

    /// The files of a command that takes some.
    QStringList fileWords() const { return m_fileWords; }

    /// The program and its arguments.
    QStringList programWords() const { return m_programWords; }

private:
    void read(const QStringList &words);
    /// Takes the option at \p index and its value; gives the index behind it.
    qsizetype takeOption(const QStringList &words, qsizetype index);
    qsizetype takeValue(const Option &option, const QString &shown, const QString &attached, bool isAttached,
                        const QStringList &words, qsizetype index);
    const Option *longOption(const QString &name) const;
    const Option *shortOption(QChar name) const;
    void fail(const QString &error);

    Command m_command;
    QHash<QString, QStringList> m_values;
    QStringList m_fileWords;
    QStringList m_programWords;
    QString m_error;
    bool m_wantsHelp = false;
};

} // namespace Vantle::Tool
