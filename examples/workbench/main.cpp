#include <QtGui/QGuiApplication>
#include <QtQml/QQmlApplicationEngine>

int main(int argc, char **argv)
{
    QGuiApplication application(argc, argv);
    QGuiApplication::setApplicationName(QStringLiteral("workbench"));
    QQmlApplicationEngine engine(QUrl(QStringLiteral("qrc:/Workbench.qml")));
    return engine.rootObjects().isEmpty() ? 1 : application.exec();
}
