#include "tool/commands.h"
#include "tool/installation.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QFile>
#include <QtCore/QStringList>

#include <csignal>

int main(int argc, char **argv)
{
    // A reader that goes away is an error of the write, not the end of us.
    std::signal(SIGPIPE, SIG_IGN);
    // Before Qt takes out the words that it thinks are its own: they may be the
    // program's.
    QStringList words;
    for (int i = 1; i < argc; ++i)
        words.append(QFile::decodeName(argv[i]));
    const QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("vantle"));
    QCoreApplication::setApplicationVersion(Vantle::Tool::toolVersion());
    return Vantle::Tool::runTool(words);
}
