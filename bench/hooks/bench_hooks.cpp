// What a question to extensions costs: answered by a list and by a function,
// against the bare call of that function, and against a window without hooks.

#include "hook/logger.h"
#include "wrappers/qt/extensions/qtquickcommon/diagnostics/logging.h"
#include "wrappers/qt/extensions/qtquickcommon/extensionloader_p.h"

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtGui/QGuiApplication>
#include <QtQml/QQmlComponent>
#include <QtQml/QQmlEngine>

#include <benchmark/benchmark.h>

#include <memory>

namespace {

class SilentLogger : public Vantle::Logger
{
public:
    void info(const std::string &) override {}
    void warning(const std::string &message) override { qFatal("%s", message.c_str()); }
    void level3(const std::string &) override {}
    void level4(const std::string &) override {}
};

/// A window whose only extension has the members that were written last.
class HookedWindow
{
public:
    explicit HookedWindow(const char *members)
    {
        static const QTemporaryDir folder;
        qputenv("VANTLE_PREFIX", QFile::encodeName(folder.path()));
        qputenv("VANTLE_QTQUICK_EXTENSION_PATH", QFile::encodeName(folder.path()));
        QFile file(folder.filePath(QStringLiteral("extension.qml")));
        if (!file.open(QIODevice::WriteOnly))
            qFatal("cannot write the extension");
        file.write("import com.corvaline.vantle.qtquick 0.1\nVantleHook { id: hook\n");
        file.write(members);
        file.write("\n}\n");
        file.close();

        QQmlComponent component(&m_engine);
        component.setData("import QtQuick\nWindow { component Tile: Rectangle {}\nTile {} }", QUrl());
        m_window.reset(qobject_cast<QQuickWindow *>(component.create()));
        Vantle::QtWrapper::hooksForItem(item());
    }

    QQuickItem *item() const { return m_window->contentItem()->childItems().constFirst(); }
    VantleHook *hook() const { return m_window->findChild<VantleHook *>(); }

private:
    QQmlEngine m_engine;
    std::unique_ptr<QQuickWindow> m_window;
};

constexpr char functionMember[] = "function isIgnored(item) { return true }";

void askWith(benchmark::State &state, const char *members, bool isAnswerExpected)
{
    const HookedWindow window(members);
    QQuickItem *const item = window.item();
    bool ignored = false;
    if (VantleQtQuickHook::isIgnored(item, &ignored) != isAnswerExpected)
        state.SkipWithError("the extension does not answer as it should");
    for (auto _ : state) {
        benchmark::DoNotOptimize(VantleQtQuickHook::isIgnored(item, &ignored));
        benchmark::ClobberMemory();
    }
}

void baselineBareCall(benchmark::State &state)
{
    const HookedWindow window(functionMember);
    const QVariant argument = QVariant::fromValue(window.item());
    VantleHook *const hook = window.hook();
    for (auto _ : state) {
        QVariant result;
        QMetaObject::invokeMethod(hook, "isIgnored", Q_RETURN_ARG(QVariant, result), Q_ARG(QVariant, argument));
        benchmark::DoNotOptimize(result);
    }
}
BENCHMARK(baselineBareCall);

void answeredByFunction(benchmark::State &state)
{
    askWith(state, functionMember, true);
}
BENCHMARK(answeredByFunction);

void declinedByFunction(benchmark::State &state)
{
    askWith(state, "function isIgnored(item) { return hook.unhandled }", false);
}
BENCHMARK(declinedByFunction);

void answeredByArrayOfOne(benchmark::State &state)
{
    askWith(state, "property var blacklistedTypes: ['Tile']", true);
}
BENCHMARK(answeredByArrayOfOne);

void answeredByListOfOne(benchmark::State &state)
{
    askWith(state, "property list<string> blacklistedTypes: ['Tile']", true);
}
BENCHMARK(answeredByListOfOne);

void declinedByListOfTen(benchmark::State &state)
{
    askWith(state, "property list<string> blacklistedTypes: ['A', 'B', 'C', 'D', 'E', 'F', 'G', 'H', 'I', 'J']", false);
}
BENCHMARK(declinedByListOfTen);

void hookWithNothingToSay(benchmark::State &state)
{
    askWith(state, "", false);
}
BENCHMARK(hookWithNothingToSay);

void windowWithoutHooks(benchmark::State &state)
{
    const HookedWindow window("");
    delete window.hook();
    QQuickItem *const item = window.item();
    bool ignored = false;
    for (auto _ : state)
        benchmark::DoNotOptimize(VantleQtQuickHook::isIgnored(item, &ignored));
}
BENCHMARK(windowWithoutHooks);

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QUICK_BACKEND", "software");
    qputenv("QML_DISABLE_DISK_CACHE", "1");
    QGuiApplication application(argc, argv);
    SilentLogger logger;
    Vantle::QtQuickCommon::setLogger(&logger);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
