#include "wrappers/qt/namesfile.h"

#include <gtest/gtest.h>

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

using namespace Vantle;
using namespace Vantle::QtWrapper;

namespace {

class NamesFiles : public testing::Test
{
protected:
    void parse(const char *json) { names = NamesFile::parse(json, &error); }
    QString nameFor(const char *alias) const { return names.nameFor(QString::fromUtf8(alias)).qualifiedName(); }
    QString aliasFor(const char *name) const { return names.aliasFor(QString::fromUtf8(name)); }
    QString errorOf(const QByteArray &json)
    {
        parse(json);
        EXPECT_TRUE(names.isEmpty());
        return error;
    }

    NamesFile names;
    QString error;
};

QString text(const char *value)
{
    return QString::fromUtf8(value);
}

} // namespace

TEST_F(NamesFiles, AliasStandsForItsSelectorAndBack)
{
    parse(R"({"login": "Window#main Button[text=\"Log in\"]", "main": "Window#main"})");
    EXPECT_EQ(error, QString());
    EXPECT_EQ(nameFor("login"), text("Window#main Button[text=\"Log in\"]"));
    EXPECT_EQ(aliasFor("Window#main Button[text=\"Log in\"]"), text("@login"));
    EXPECT_EQ(aliasFor("Window#main"), text("@main"));
}

TEST_F(NamesFiles, OnlyExactlyTheNameHasTheAlias)
{
    parse(R"({"login": "Window Button[text=\"Log in\"]"})");
    EXPECT_EQ(aliasFor("Window Button[text=\"Log in\"]:visible"), QString());
    EXPECT_EQ(aliasFor("Button[text=\"Log in\"]"), QString());
    EXPECT_EQ(aliasFor("Window Button[text*=\"Log in\"]"), QString());
    EXPECT_EQ(aliasFor(""), QString());
    EXPECT_EQ(aliasFor("not [ a name"), QString());
}

TEST_F(NamesFiles, SelectorsAreComparedInCanonicalForm)
{
    parse(R"({"a": "Window   Button:visible[text='x']#b"})");
    EXPECT_EQ(aliasFor("Window Button#b[text=\"x\"]:visible"), text("@a"));
}

TEST_F(NamesFiles, AliasesMayBuildOnAliases)
{
    parse(R"({"z": "Window", "a": "@z Dialog", "b": "@a Button", "c": "@b"})");
    EXPECT_EQ(error, QString());
    EXPECT_EQ(nameFor("b"), text("Window Dialog Button"));
    EXPECT_EQ(nameFor("c"), text("Window Dialog Button"));
    EXPECT_EQ(aliasFor("@a Button"), text("@b"));
    EXPECT_EQ(aliasFor("Window Dialog Button"), text("@b"));
}

TEST_F(NamesFiles, FirstOfSeveralAliasesInOrderIsTaken)
{
    parse(R"({"b": "Window", "a": "Window"})");
    EXPECT_EQ(aliasFor("Window"), text("@a"));
}

TEST_F(NamesFiles, UnknownAliasesStayInNames)
{
    parse(R"({"a": "Window"})");
    EXPECT_EQ(nameFor("b"), QString());
    EXPECT_EQ(names.expanded(ObjectName(text("@b Button"))).qualifiedName(), text("@b Button"));
    EXPECT_EQ(names.expanded(ObjectName(text("@a Button"))).qualifiedName(), text("Window Button"));
}

TEST_F(NamesFiles, EmptyObjectHasNoAliases)
{
    parse(" {} ");
    EXPECT_EQ(error, QString());
    EXPECT_TRUE(names.isEmpty());
}

TEST_F(NamesFiles, TextThatIsNoJsonIsAnError)
{
    EXPECT_TRUE(errorOf("{\"a\": }").startsWith(text("not JSON: ")));
    EXPECT_FALSE(errorOf("").isEmpty());
    EXPECT_EQ(errorOf("[\"a\"]"), text("expected a JSON object that gives each alias its selector"));
}

TEST_F(NamesFiles, AliasDefinedTwiceIsAnError)
{
    EXPECT_EQ(errorOf(R"({"a": "Window", "b": "X", "a": "Window"})"), text("the alias \"a\" is defined twice"));
    EXPECT_EQ(errorOf(R"({"a": "Window", "\u0061": "Dialog"})"), text("the alias \"a\" is defined twice"));
    parse(R"json({"a": "X[k=\"a: b, {\\\\\"]", "k": "Y"})json");
    EXPECT_EQ(error, QString()) << "what stands in a selector is no alias";
}

TEST_F(NamesFiles, CircleIsAnError)
{
    EXPECT_EQ(errorOf(R"({"a": "@a"})"), text("the alias \"a\" leads in a circle: a -> a"));
    EXPECT_EQ(errorOf(R"({"a": "@b Button", "b": "@c", "c": "@b Item"})"),
              text("the alias \"b\" leads in a circle: b -> c -> b"));
}

TEST_F(NamesFiles, AliasOfNothingIsAnError)
{
    EXPECT_EQ(errorOf(R"({"a": "@b Button"})"), text("the alias \"a\" stands for an unknown one, \"b\""));
}

TEST_F(NamesFiles, BadEntriesAreErrors)
{
    EXPECT_EQ(errorOf(R"({"a": 5})"), text("the alias \"a\": expected a selector in quotes"));
    EXPECT_EQ(errorOf(R"({"a": " "})"), text("the alias \"a\": its selector is empty"));
    EXPECT_TRUE(errorOf(R"json({"a": "Button:nth(0)"})json").startsWith(text("the alias \"a\": column 12 of its selector: ")));
    for (const char *alias : {"", "@a", "1a", "a b"})
        EXPECT_TRUE(errorOf(QByteArray("{\"") + alias + "\": \"Window\"}").contains(text("is no alias"))) << alias;
}

TEST_F(NamesFiles, FileIsNamedInErrors)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(text("names.json"));
    NamesFile::read(path, &error);
    EXPECT_TRUE(error.startsWith(text("cannot read the names file ") + path + text(": "))) << qPrintable(error);

    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("[]");
    file.close();
    NamesFile::read(path, &error);
    EXPECT_TRUE(error.startsWith(text("names file ") + path + text(": "))) << qPrintable(error);

    ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    file.write("{\"a\": \"Window\"}");
    file.close();
    EXPECT_EQ(NamesFile::read(path, &error).aliasFor(text("Window")), text("@a"));
    EXPECT_EQ(error, QString());
}
