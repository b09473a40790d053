#include "hook/objectname.h"

#include <gtest/gtest.h>

using Vantle::ObjectName;
using Vantle::PropertyValue;

namespace {

PropertyValue value(const QString &text, PropertyValue::Modifiers modifiers = PropertyValue::Equals)
{
    return PropertyValue(text, modifiers, PropertyValue::Text);
}

ObjectName parsed(const char *text)
{
    ObjectName::ParseError error;
    const ObjectName name = ObjectName::parse(QString::fromUtf8(text), &error);
    EXPECT_EQ(error.column, 0) << text << ": " << qPrintable(error.message);
    EXPECT_TRUE(error.message.isEmpty());
    return name;
}

std::string text(const ObjectName &name)
{
    return name.qualifiedName().toStdString();
}

std::string canonical(const char *name)
{
    return text(parsed(name));
}

ObjectName named(std::initializer_list<std::pair<const char *, PropertyValue>> properties)
{
    ObjectName name;
    for (const auto &[key, propertyValue] : properties)
        name.setProperty(QString::fromUtf8(key), propertyValue);
    return name;
}

TEST(ObjectName, withoutPropertiesIsEmptyInBothForms)
{
    const ObjectName empty;
    EXPECT_TRUE(empty.isEmpty());
    EXPECT_EQ(text(empty), "");
    EXPECT_EQ(empty.occurrenceValue(), 1);
    EXPECT_EQ(parsed(""), empty);
    EXPECT_EQ(parsed(" \t\r\n"), empty);
    EXPECT_EQ(ObjectName(QString()), empty);
}

TEST(ObjectName, readsEveryPartOfAStep)
{
    const ObjectName name = parsed("ApplicationWindow Button#save[text=\"Save as…\"]:visible:nth(2)");
    EXPECT_EQ(name.properties().keys(),
              (QStringList{QStringLiteral("container"), QStringLiteral("id"), QStringLiteral("occurrence"),
                           QStringLiteral("text"), QStringLiteral("type"), QStringLiteral("visible")}));
    EXPECT_EQ(name.property(QStringLiteral("container")), value(QStringLiteral("ApplicationWindow")));
    EXPECT_EQ(name.property(QStringLiteral("type")), value(QStringLiteral("Button")));
    EXPECT_EQ(name.property(QStringLiteral("id")), value(QStringLiteral("save")));
    EXPECT_EQ(name.property(QStringLiteral("text")), value(QStringLiteral("Save as…")));
    EXPECT_EQ(name.property(QStringLiteral("visible")), value(QStringLiteral("true")));
    EXPECT_EQ(name.property(QStringLiteral("occurrence")), value(QStringLiteral("2")));
    EXPECT_EQ(name.occurrenceValue(), 2);
    EXPECT_EQ(text(name), "ApplicationWindow Button#save[text=\"Save as…\"]:visible:nth(2)");
}

TEST(ObjectName, theModifiersAreTheOperators)
{
    const auto modifiersOf = [](const char *comparison) {
        const ObjectName name = parsed(comparison);
        EXPECT_EQ(name.property(QStringLiteral("text")).stringValue(), QStringLiteral("a.b"));
        EXPECT_EQ(text(name), comparison);
        return name.property(QStringLiteral("text")).modifiers();
    };
    EXPECT_EQ(modifiersOf("[text=\"a.b\"]"), PropertyValue::Equals);
    EXPECT_EQ(modifiersOf("[text*=\"a.b\"]"), PropertyValue::Contains);
    EXPECT_EQ(modifiersOf("[text^=\"a.b\"]"), PropertyValue::BeginsWith);
    EXPECT_EQ(modifiersOf("[text$=\"a.b\"]"), PropertyValue::EndsWith);
    EXPECT_EQ(modifiersOf("[text=/a.b/]"), PropertyValue::MatchesRegularExpression);
    EXPECT_EQ(modifiersOf("[text=/a.b/i]"), PropertyValue::MatchesRegularExpressionCaseInsensitively);
}

TEST(ObjectName, theCanonicalFormHasOneOrder)
{
    EXPECT_EQ(canonical("  Button:nth( 007 ):visible[z='1']#save[ b = \"2\" ][a*='3']\n"),
              "Button#save[a*=\"3\"][b=\"2\"][z=\"1\"]:visible:nth(7)");
    EXPECT_EQ(canonical("[type='Button'][id='save'][visible='true'][occurrence='3']"), "Button#save:visible:nth(3)");
    EXPECT_EQ(canonical("[visible=\"false\"]"), ":hidden");
    EXPECT_EQ(canonical(":hidden"), ":hidden");
    EXPECT_EQ(canonical("Button[container='Window']"), "Window Button");
}

TEST(ObjectName, rowsStandAheadOfColumns)
{
    const ObjectName cell(QStringLiteral("Field[column=\"2\"][label=\"a\"][row=\"7\"]"));
    EXPECT_EQ(cell.qualifiedName(), QStringLiteral("Field[row=\"7\"][column=\"2\"][label=\"a\"]"));
    EXPECT_EQ(ObjectName(cell.qualifiedName()), cell);
    EXPECT_EQ(ObjectName(QStringLiteral("[row=\"7\"][label=\"a\"]")).qualifiedName(),
              QStringLiteral("[label=\"a\"][row=\"7\"]"));
    EXPECT_EQ(ObjectName(QStringLiteral("[label=\"a\"][column=\"2\"]")).qualifiedName(),
              QStringLiteral("[column=\"2\"][label=\"a\"]"));
}

TEST(ObjectName, keysAreOrderedCaseSensitively)
{
    EXPECT_EQ(canonical("[a='1'][Z='1'][_='1']"), "[Z=\"1\"][_=\"1\"][a=\"1\"]");
}

TEST(ObjectName, everythingAheadOfTheLastStepIsTheContainerInCanonicalForm)
{
    const ObjectName name = parsed("Window:visible[title='Main']  \t Dialog:nth(1)\n#ok");
    EXPECT_EQ(name.property(QStringLiteral("container")),
              value(QStringLiteral("Window[title=\"Main\"]:visible Dialog:nth(1)")));
    EXPECT_EQ(name.property(QStringLiteral("id")), value(QStringLiteral("ok")));
    EXPECT_EQ(name.properties().size(), 2);
    EXPECT_EQ(text(name), "Window[title=\"Main\"]:visible Dialog:nth(1) #ok");
}

TEST(ObjectName, aBlankMakesAStep)
{
    EXPECT_EQ(parsed("Button#save").properties().size(), 2);
    EXPECT_EQ(parsed("Button #save").property(QStringLiteral("container")), value(QStringLiteral("Button")));
    EXPECT_TRUE(parsed("Button #save").property(QStringLiteral("type")).stringValue().isEmpty());
}

TEST(ObjectName, quotesMayBeSingleOrDouble)
{
    EXPECT_EQ(parsed("[text=\"it's\"]"), parsed("[text='it\\'s']"));
    EXPECT_EQ(parsed("[text='say \"hi\"']"), parsed("[text=\"say \\\"hi\\\"\"]"));
    EXPECT_EQ(canonical("[text='say \"hi\", it\\'s late']"), "[text=\"say \\\"hi\\\", it's late\"]");
}

TEST(ObjectName, valuesHaveEscapesForQuotesBackslashAndLineFeed)
{
    const ObjectName name = parsed("[text=\"a\\\\n\\n\\\"b\\'\"]");
    EXPECT_EQ(name.property(QStringLiteral("text")), value(QStringLiteral("a\\n\n\"b'")));
    EXPECT_EQ(text(name), "[text=\"a\\\\n\\n\\\"b'\"]");
}

TEST(ObjectName, valuesMayHoldWhatSeparatesStepsAndParts)
{
    const ObjectName name = parsed("Window [text=\"a ] [b='c'] #d :visible /\"]");
    EXPECT_EQ(name.property(QStringLiteral("text")), value(QStringLiteral("a ] [b='c'] #d :visible /")));
}

TEST(ObjectName, aRegularExpressionKeepsItsBackslashesExceptBeforeASlash)
{
    const ObjectName name = parsed("[source=/\\/img\\/\\d+\\\\x\\.png$/]");
    EXPECT_EQ(name.property(QStringLiteral("source")),
              value(QStringLiteral("/img/\\d+\\\\x\\.png$"), PropertyValue::MatchesRegularExpression));
    EXPECT_EQ(text(name), "[source=/\\/img\\/\\d+\\\\x\\.png$/]");
}

TEST(ObjectName, aPatternThatNoSlashesCanHoldIsQuoted)
{
    const auto pattern = [](const char16_t *text_, bool insensitive = false) {
        return named({{"text", value(QString::fromUtf16(text_),
                                     insensitive ? PropertyValue::MatchesRegularExpressionCaseInsensitively
                                                 : PropertyValue::MatchesRegularExpression)}});
    };
    EXPECT_EQ(text(pattern(u"a\\/b")), "[text~=\"a\\\\/b\"]");
    EXPECT_EQ(text(pattern(u"a\nb", true)), "[text~=\"a\\nb\"i]");
    EXPECT_EQ(text(pattern(u"a\\")), "[text~=\"a\\\\\"]");
    EXPECT_EQ(text(pattern(u"")), "[text=//]");
    for (const auto *p : {u"a\\/b", u"a\nb", u"a\\", u"a\\\n", u"", u"\\\\/", u"\\\\", u"/", u"i"}) {
        EXPECT_EQ(ObjectName(pattern(p).qualifiedName()), pattern(p)) << text(pattern(p));
        EXPECT_EQ(ObjectName(pattern(p, true).qualifiedName()), pattern(p, true)) << text(pattern(p, true));
    }
}

TEST(ObjectName, keysThatAreNoIdentifiersAreQuoted)
{
    const ObjectName name = parsed("['odd \"key\"'='1'][''*='2'][\"plain\"='3']");
    EXPECT_EQ(name.property(QStringLiteral("odd \"key\"")), value(QStringLiteral("1")));
    EXPECT_EQ(name.property(QString()), value(QStringLiteral("2"), PropertyValue::Contains));
    EXPECT_EQ(text(name), "[\"\"*=\"2\"][\"odd \\\"key\\\"\"=\"1\"][plain=\"3\"]");
}

TEST(ObjectName, whatHasNoShortFormStandsInBrackets)
{
    const auto contains = PropertyValue::Contains;
    EXPECT_EQ(text(named({{"type", value(QStringLiteral("Ns::Item"))}})), "[type=\"Ns::Item\"]");
    EXPECT_EQ(text(named({{"type", value(QString())}})), "[type=\"\"]");
    EXPECT_EQ(text(named({{"type", value(QStringLiteral("Button"), contains)}})), "[type*=\"Button\"]");
    EXPECT_EQ(text(named({{"id", value(QStringLiteral("grün"))}})), "[id=\"grün\"]");
    EXPECT_EQ(text(named({{"id", value(QStringLiteral("ok"), contains)}})), "[id*=\"ok\"]");
    EXPECT_EQ(text(named({{"visible", value(QStringLiteral("yes"))}})), "[visible=\"yes\"]");
    EXPECT_EQ(text(named({{"visible", value(QStringLiteral("true"), contains)}})), "[visible*=\"true\"]");
    EXPECT_EQ(text(named({{"occurrence", value(QStringLiteral("1"), contains)}})), "[occurrence*=\"1\"]");
    for (const char *number : {"0", "-1", "+2", "02", " 2", "2 ", "two", "", "2147483648", "٢"}) {
        const auto name = named({{"occurrence", value(QString::fromUtf8(number))}});
        EXPECT_EQ(text(name), std::string("[occurrence=\"") + number + "\"]");
        EXPECT_EQ(ObjectName(name.qualifiedName()), name);
    }
}

TEST(ObjectName, aContainerThatIsNoCanonicalNameStandsInBrackets)
{
    const auto inside = [](const char *container) {
        return named({{"container", value(QString::fromUtf8(container))}, {"type", value(QStringLiteral("Button"))}});
    };
    EXPECT_EQ(text(inside("Window Dialog")), "Window Dialog Button");
    EXPECT_EQ(text(inside("@dialog")), "@dialog Button");
    EXPECT_EQ(text(inside("")), "Button[container=\"\"]");
    EXPECT_EQ(text(inside(" Window")), "Button[container=\" Window\"]");
    EXPECT_EQ(text(inside("[type='Window']")), "Button[container=\"[type='Window']\"]");
    EXPECT_EQ(text(inside("no name at all!")), "Button[container=\"no name at all!\"]");
    EXPECT_EQ(text(inside("Window  Dialog")), "Button[container=\"Window  Dialog\"]");
    EXPECT_EQ(text(named({{"container", value(QStringLiteral("Window"))}})), "[container=\"Window\"]");
    EXPECT_EQ(text(named({{"container", value(QStringLiteral("Window"), PropertyValue::Contains)},
                          {"type", value(QStringLiteral("Button"))}})),
              "Button[container*=\"Window\"]");
    for (const char *container : {"", " Window", "[type='Window']", "no name at all!", "@dialog", "Window @dialog"})
        EXPECT_EQ(ObjectName(inside(container).qualifiedName()), inside(container)) << container;
}

TEST(ObjectName, aContainerInBracketsInsideAContainerSurvives)
{
    const ObjectName name = parsed("Item[container='!'] Button");
    EXPECT_EQ(name.property(QStringLiteral("container")), value(QStringLiteral("Item[container=\"!\"]")));
    EXPECT_EQ(text(name), "Item[container=\"!\"] Button");
}

TEST(ObjectName, anAliasStandsForAWholeName)
{
    const ObjectName name = parsed(" @login.ok-button ");
    EXPECT_EQ(name, named({{"alias", value(QStringLiteral("login.ok-button"))}}));
    EXPECT_EQ(text(name), "@login.ok-button");
}

TEST(ObjectName, anAliasCanBeTheOutermostContainer)
{
    const ObjectName name = parsed("@dialog  Row Button");
    EXPECT_EQ(name.property(QStringLiteral("container")), value(QStringLiteral("@dialog Row")));
    EXPECT_EQ(text(name), "@dialog Row Button");
}

TEST(ObjectName, anAliasAmongOtherPropertiesIsOneOfThem)
{
    const auto alias = value(QStringLiteral("dialog"));
    EXPECT_EQ(text(named({{"alias", alias}, {"type", value(QStringLiteral("Item"))}})), "Item[alias=\"dialog\"]");
    EXPECT_EQ(text(named({{"alias", alias}, {"container", value(QStringLiteral("Window"))}})),
              "Window [alias=\"dialog\"]");
    EXPECT_EQ(text(named({{"alias", value(QStringLiteral("two words"))}})), "[alias=\"two words\"]");
    EXPECT_EQ(text(named({{"alias", value(QStringLiteral("dialog"), PropertyValue::EndsWith)}})),
              "[alias$=\"dialog\"]");
    EXPECT_EQ(parsed("Window [alias='dialog']").properties().size(), 2);
}

TEST(ObjectName, propertiesCanBeSetReplacedAndRemoved)
{
    ObjectName name;
    const QString key = QStringLiteral("text");
    EXPECT_EQ(name.property(key), PropertyValue());
    name.setProperty(key, value(QStringLiteral("a")));
    name.setProperty(key, value(QStringLiteral("b")));
    EXPECT_EQ(name.property(key), value(QStringLiteral("b")));
    EXPECT_EQ(name.properties().size(), 1);
    EXPECT_FALSE(name.isEmpty());
    name.removeProperty(QStringLiteral("TEXT"));
    EXPECT_FALSE(name.isEmpty());
    name.removeProperty(key);
    EXPECT_TRUE(name.isEmpty());
}

TEST(ObjectName, theOccurrenceIsANumberOrNothing)
{
    const auto occurrence = [](const char *number) {
        return named({{"occurrence", value(QString::fromUtf8(number))}}).occurrenceValue();
    };
    EXPECT_EQ(parsed("Button").occurrenceValue(), 1);
    EXPECT_EQ(occurrence("3"), 3);
    EXPECT_EQ(occurrence("-3"), -3);
    EXPECT_EQ(occurrence("2147483647"), 2147483647);
    EXPECT_EQ(occurrence("2147483648"), 0);
    EXPECT_EQ(occurrence("three"), 0);
    EXPECT_EQ(occurrence(""), 0);
}

TEST(ObjectName, anyNumberOfStepsCanBeReadAndWritten)
{
    const QString longName = QStringLiteral("Item ").repeated(100000) + QStringLiteral("Button");
    const ObjectName name(longName);
    EXPECT_EQ(name.properties().size(), 2);
    EXPECT_EQ(name.qualifiedName(), longName);
}

TEST(ObjectName, containersInsideContainersCanBeReadAndWritten)
{
    ObjectName name = named({{"type", value(QStringLiteral("!"))}});
    for (int depth = 0; depth < 16; ++depth) {
        const QString inner = name.qualifiedName() + u' ';
        name = named({{"container", value(inner)}, {"type", value(QStringLiteral("Item"))}});
    }
    EXPECT_EQ(ObjectName(name.qualifiedName()), name);
}

} // namespace
