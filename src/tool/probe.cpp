// The smallest program that the agent can be loaded into.
//
//   vantle-probe              waits to be ended, half a minute at most
//   vantle-probe --load FILE  tries to load a library and says what is missing

#include <QtCore/QTimer>
#include <QtGui/QGuiApplication>

#include <cstdio>
#include <cstring>

#include <dlfcn.h>

namespace {

constexpr std::chrono::seconds lifetime(30);

int tryToLoad(const char *file)
{
    if (dlopen(file, RTLD_NOW | RTLD_LOCAL))
        return 0;
    std::printf("%s\n", dlerror());
    return 1;
}

} // namespace

int main(int argc, char **argv)
{
    if (argc == 3 && std::strcmp(argv[1], "--load") == 0)
        return tryToLoad(argv[2]);
    const QGuiApplication application(argc, argv);
    QTimer::singleShot(lifetime, &application, &QGuiApplication::quit);
    return QGuiApplication::exec();
}
