// A program of somebody else's: uses one thing of each library, and holds the
// prefix, which is its argument, against what the package says.

#include <hook/logger.h>
#include <hook/objectname.h>
#include <tracelib/configuration.h>
#include <tracelib/tracepoint.h>
#include <wrappers/qt/application.h>
#include <wrappers/qt/extensions/qtquick/qtquicksetup.h>
#include <wrappers/qt/extensions/qtquickcommon/compression/syntheticevent.h>
#include <wrappers/qt/extensions/qtquickcommon/diagnostics/logging.h>
#include <wrappers/qt/extensions/qtquickcommon/identity/itemids.h>
#include <wrappers/qt/extensions/qtquickcommon/recording/qteventrecorder.h>
#include <wrappers/qt/extensions/qtquickcommon/recording/qtquickflickeventgenerator.h>
#include <wrappers/qt/qmltypes.h>

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtGui/QGuiApplication>
#include <QtQml/QQmlComponent>
#include <QtQml/QQmlEngine>
#include <QtQuick/QQuickItem>

#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>

namespace {

int failures = 0;

void expect(bool holds, const char *what)
{
    if (holds)
        return;
    std::fprintf(stderr, "does not hold: %s\n", what);
    ++failures;
}

/// Hosts may see flicks on their way to the recorder.
class FlickCounter : public Vantle::QtWrapper::QtQuickFlickEventGenerator
{
public:
    using QtQuickFlickEventGenerator::QtQuickFlickEventGenerator;

    void flickStarted(QQuickItem *flickable, const QPointF &position, QQuickItem *item) override
    {
        ++started;
        QtQuickFlickEventGenerator::flickStarted(flickable, position, item);
    }

    int started = 0;
};

class SilentLogger : public Vantle::Logger
{
    void info(const std::string &) override {}
    void warning(const std::string &) override {}
    void level3(const std::string &) override {}
    void level4(const std::string &) override {}
};

void traceOnce()
{
    using namespace corvaline::tracelib;
    static TracePoint point(TracePointType::Detail, __FILE__, __LINE__, "traceOnce", "consumer");
    if (advanceVisit(&point))
        visitTracePoint(&point, "traced", nullptr);
}

void tryTracing()
{
    std::string traced;
    corvaline::tracelib::setSink([&traced](const corvaline::tracelib::TracePoint &, const char *text,
                                           corvaline::tracelib::VariableSnapshot *) { traced = text; });
    traceOnce();
    expect(traced.empty(), "nothing is traced before the group is on");
    corvaline::tracelib::setGroups("consumer");
    traceOnce();
    expect(traced == "traced", "the visit reached the sink");
    corvaline::tracelib::setSink({});
}

void tryIds()
{
    QQmlEngine engine;
    QQmlComponent component(&engine);
    component.setData("import QtQuick\nItem { id: page }", QUrl());
    const std::unique_ptr<QObject> item(component.create());
    expect(Vantle::QtWrapper::idForQuickItem(qobject_cast<QQuickItem *>(item.get())) == QStringLiteral("page"),
           "an item has its id");
}

void tryFlicks()
{
    QQmlEngine engine;
    QQmlComponent component(&engine);
    component.setData("import QtQuick\nFlickable { Item {} }", QUrl());
    const std::unique_ptr<QObject> flickable(component.create());
    FlickCounter generator(Vantle::QtWrapper::QtEventRecorder::instance());
    Vantle::QtWrapper::FlickObserver &observer = generator;
    observer.flickStarted(qobject_cast<QQuickItem *>(flickable.get()), QPointF(), nullptr);
    expect(generator.started == 1, "a host's generator is told of flicks");
}

} // namespace

int main(int argc, char **argv)
{
    QGuiApplication application(argc, argv);
    SilentLogger logger;
    Vantle::QtQuickCommon::setLogger(&logger);
    Vantle::QtWrapper::Application host{Vantle::QtWrapper::WrapperConfig()};
    Vantle::QtWrapper::setupQtQuick();

    expect(Vantle::ObjectName(QStringLiteral("Button#save")).qualifiedName() == QStringLiteral("Button#save"),
           "a name round-trips");
    expect(Vantle::QtWrapper::cleanQmlClassName(QByteArrayLiteral("Page_QMLTYPE_3")) == "Page", "a name is cleaned");
    expect(Vantle::QtWrapper::SyntheticEvent().timestamp > 0, "a record is stamped");
    tryTracing();
    tryIds();
    tryFlicks();

    const std::filesystem::path extensions = EXTENSION_DIR;
    expect(std::filesystem::is_directory(extensions), "there is a directory for extensions");
    expect(argc == 2 && extensions.string().rfind(argv[1], 0) == 0, "it lies where the prefix is now");
    return failures;
}
