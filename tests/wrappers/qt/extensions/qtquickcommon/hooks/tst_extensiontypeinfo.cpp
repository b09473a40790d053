// What editors and qmllint are told about the type of extensions.

#include "hookscene.h"

#include "wrappers/qt/extensions/qtquickcommon/extensionloader_p.h"

#include <QtCore/QDir>
#include <QtCore/QMetaMethod>
#include <QtCore/QMetaProperty>
#include <QtCore/QProcess>
#include <QtCore/QRegularExpression>
#include <QtQml/QQmlComponent>

using namespace VantleTest;

namespace {

const QString moduleFolder = QStringLiteral(VANTLE_QML_MODULE_DIR "/com/corvaline/vantle/qtquick/");

QString textOf(const QString &path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << qPrintable(path);
    return QString::fromUtf8(file.readAll());
}

/// Without comments, line ends and separators, so that only the content counts.
QString condensed(QString text)
{
    text.remove(QRegularExpression(QStringLiteral("//[^\n]*")));
    text.replace(QRegularExpression(QStringLiteral("[\\s;]+")), QStringLiteral(" "));
    return text.trimmed();
}

QString typeText(QByteArray type)
{
    const bool isPointer = type.endsWith('*');
    if (isPointer)
        type.chop(1);
    return QStringLiteral("type: \"%1\"%2")
        .arg(QString::fromUtf8(type), isPointer ? QStringLiteral(" isPointer: true") : QString());
}

QString propertyText(const QMetaProperty &property, int index)
{
    const QString name = QString::fromUtf8(property.name());
    QString text = QStringLiteral(" Property { name: \"%1\" %2 read: \"%1\"").arg(name, typeText(property.typeName()));
    if (property.isWritable())
        text += QStringLiteral(" write: \"set%1\"").arg(name.at(0).toUpper() + name.sliced(1));
    text += QStringLiteral(" index: %1").arg(index);
    if (!property.isWritable())
        text += QStringLiteral(" isReadonly: true");
    if (property.isFinal())
        text += QStringLiteral(" isFinal: true");
    return text + QStringLiteral(" }");
}

QString methodText(const QMetaMethod &method)
{
    QString text = QStringLiteral(" Method { name: \"%1\" %2")
                       .arg(QString::fromUtf8(method.name()), typeText(method.typeName()));
    for (int i = 0; i < method.parameterCount(); ++i) {
        text += QStringLiteral(" Parameter { name: \"%1\" %2 }")
                    .arg(QString::fromUtf8(method.parameterNames().at(i)), typeText(method.parameterTypes().at(i)));
    }
    return text + QStringLiteral(" }");
}

QString descriptionOf(const QMetaObject &type)
{
    QString text = QStringLiteral("import QtQuick.tooling 1.2 Module { Component {"
                                  " file: \"wrappers/qt/extensions/qtquickcommon/qtquickhook.h\""
                                  " name: \"%1\" accessSemantics: \"reference\" prototype: \"%2\""
                                  " exports: [\"com.corvaline.vantle.qtquick/%1 0.1\"] exportMetaObjectRevisions: [1]")
                       .arg(QString::fromUtf8(type.className()), QString::fromUtf8(type.superClass()->className()));
    for (int i = type.propertyOffset(); i < type.propertyCount(); ++i)
        text += propertyText(type.property(i), i - type.propertyOffset());
    for (int i = type.methodOffset(); i < type.methodCount(); ++i)
        text += methodText(type.method(i));
    return text + QStringLiteral(" } }");
}

struct LintResult
{
    int exitCode;
    std::string output;
};

LintResult lint(const QString &path)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    const QString include = QStringLiteral("-I");
    process.start(QStringLiteral(VANTLE_QMLLINT), {include, QStringLiteral(VANTLE_QML_MODULE_DIR), include,
                                                   QStringLiteral(VANTLE_HOST_MODULE_DIR), path});
    EXPECT_TRUE(process.waitForFinished(60000)) << VANTLE_QMLLINT;
    return {process.exitCode(), process.readAll().toStdString()};
}

} // namespace

TEST(ExtensionTypeInfo, DescribesTheTypeAsItIs)
{
    EXPECT_EQ(condensed(textOf(moduleFolder + QStringLiteral("vantle.qmltypes"))).toStdString(),
              descriptionOf(VantleHook::staticMetaObject).toStdString());
}

TEST(ExtensionTypeInfo, TheLinterAcceptsAllExtensionsOfOurs)
{
    int count = 0;
    for (const char *folder : {VANTLE_EXAMPLES_DIR, VANTLE_STANDARD_EXTENSIONS_DIR}) {
        const QFileInfoList files = QDir(QLatin1String(folder)).entryInfoList({QStringLiteral("*.qml")});
        for (const QFileInfo &file : files) {
            const LintResult result = lint(file.filePath());
            EXPECT_EQ(result.exitCode, 0) << qPrintable(file.fileName());
            EXPECT_EQ(result.output, "") << qPrintable(file.fileName());
            ++count;
        }
    }
    EXPECT_GE(count, 6);
}

TEST(ExtensionTypeInfo, TheLinterKnowsMembersAndTheirTypes)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("a.qml"));
    for (const auto &[members, complaint] :
         {std::pair{"colour: 3", "no property \"colour\" exists"},
          {"priority: 'high'", "Cannot assign literal of type string to int"},
          {"function isIgnored(item) { return hook.isQmlTyp(item, 'x') }", "\"isQmlTyp\" not found"}}) {
        writeFile(path, extensionText(QLatin1String(members)));
        const LintResult result = lint(path);
        EXPECT_NE(result.exitCode, 0) << members;
        EXPECT_NE(result.output.find(complaint), std::string::npos) << result.output;
    }
    writeFile(path, extensionText(QStringLiteral("priority: 3")));
    EXPECT_EQ(lint(path).exitCode, 0);
}

// Who has our directory in QML_IMPORT_PATH, for an editor, has it in programs too.
TEST(ExtensionTypeInfo, DoesNotGetInTheWayOfTheRegisteredType)
{
    const RecordingLogger logger;
    Scene scene;
    scene.engine->addImportPath(QStringLiteral(VANTLE_QML_MODULE_DIR));
    Vantle::QtWrapper::hooksForItem(scene.addWindow(QString())->contentItem());
    QQmlComponent component(scene.engine.get());
    component.setData(extensionText(QStringLiteral("priority: 4")).toUtf8(), QUrl());
    const std::unique_ptr<QObject> object(component.create());
    const auto *const hook = qobject_cast<VantleHook *>(object.get());
    ASSERT_NE(hook, nullptr) << qPrintable(component.errorString());
    EXPECT_EQ(hook->priority(), 4);
}
