#include "hook/objectname.h"

#include <gtest/gtest.h>

#include <QtCore/QRandomGenerator>

using Vantle::ObjectName;

namespace {

struct BadText
{
    const char *text;
    int column;
    const char *message;
};

void PrintTo(const BadText &bad, std::ostream *out)
{
    *out << bad.text;
}

class ObjectNameErrors : public testing::TestWithParam<BadText>
{
};

TEST_P(ObjectNameErrors, sayWhereAndWhatWasExpected)
{
    ObjectName::ParseError error;
    const ObjectName name = ObjectName::parse(QString::fromUtf8(GetParam().text), &error);
    EXPECT_TRUE(name.isEmpty());
    EXPECT_TRUE(static_cast<bool>(error));
    EXPECT_EQ(error.column, GetParam().column);
    EXPECT_EQ(error.message.toStdString(), GetParam().message);
    EXPECT_TRUE(ObjectName(QString::fromUtf8(GetParam().text)).isEmpty());
}

INSTANTIATE_TEST_SUITE_P(
    Steps, ObjectNameErrors,
    testing::Values(
        BadText{"!", 1, "expected a type, \"#\", \"[\", \":\" or \"@\", found \"!\""},
        BadText{"Window !", 8, "expected a type, \"#\", \"[\" or \":\", found \"!\""},
        BadText{"7Button", 1, "expected a type, \"#\", \"[\", \":\" or \"@\", found \"7Button\""},
        BadText{"Button!", 7, "expected \"#\", \"[\", \":\", a blank or the end of the name, found \"!\""},
        BadText{"Ünit", 1, "expected a type, \"#\", \"[\", \":\" or \"@\", found \"Ü\""},
        BadText{"[a='1']Button", 8, "expected \"#\", \"[\", \":\", a blank or the end of the name, found \"Button\""},
        BadText{"\x01", 1, "expected a type, \"#\", \"[\", \":\" or \"@\", found U+0001"},
        BadText{"\xf0\x9f\x98\x80", 1, "expected a type, \"#\", \"[\", \":\" or \"@\", found U+D83D"},
        BadText{"\"Button\"", 1, "expected a type, \"#\", \"[\", \":\" or \"@\", found '\"'"},
        BadText{"Button#", 8, "expected an id, found the end of the name"},
        BadText{"Button# save", 8, "expected an id, found \" \""},
        BadText{"#ok#ok", 4, "expected each key once, found another \"id\""},
        BadText{"Button[type='Button']", 8, "expected each key once, found another \"type\""},
        BadText{"[a='1']['a'='2']", 9, "expected each key once, found another \"a\""},
        BadText{"Window [container='Item']Button", 9,
                "expected no container besides the steps ahead, found a \"container\""}));

INSTANTIATE_TEST_SUITE_P(
    Brackets, ObjectNameErrors,
    testing::Values(
        BadText{"[", 2, "expected a key, found the end of the name"},
        BadText{"[]", 2, "expected a key, found \"]\""},
        BadText{"[text", 6, "expected \"=\", \"*=\", \"^=\", \"$=\" or \"~=\", found the end of the name"},
        BadText{"[text!='a']", 6, "expected \"=\", \"*=\", \"^=\", \"$=\" or \"~=\", found \"!\""},
        BadText{"[odd key='a']", 6, "expected \"=\", \"*=\", \"^=\", \"$=\" or \"~=\", found \"key\""},
        BadText{"[text*'a']", 7, "expected \"=\", found \"'\""},
        BadText{"[text=Save]", 7, "expected a value in quotes or a regular expression in slashes, found \"Save\""},
        BadText{"[text*=/a/]", 8, "expected a value in quotes, found \"/\""},
        BadText{"[text='a'", 10, "expected \"]\", found the end of the name"},
        BadText{"[text='a' b]", 11, "expected \"]\", found \"b\""},
        BadText{"[text='a']]", 11, "expected \"#\", \"[\", \":\", a blank or the end of the name, found \"]\""},
        BadText{"[text='a", 9, "expected \"'\", found the end of the name"},
        BadText{"[text=\"a'", 10, "expected '\"', found the end of the name"},
        BadText{"[text=\"a\\\"", 11, "expected '\"', found the end of the name"},
        BadText{"[text='a\\t']", 10, "expected a quote, a backslash or \"n\" behind the backslash, found \"t\""},
        BadText{"[text='\\", 9,
                "expected a quote, a backslash or \"n\" behind the backslash, found the end of the name"},
        BadText{"[text='", 8, "expected \"'\", found the end of the name"},
        BadText{"[text=/a", 9, "expected \"/\", found the end of the name"},
        BadText{"[text=/a\\", 10, "expected \"/\", found the end of the name"},
        BadText{"[text=/a\\/]", 12, "expected \"/\", found the end of the name"},
        BadText{"[text=/a/x]", 10, "expected the flag \"i\" or \"]\", found \"x\""},
        BadText{"[text=/a/ii]", 10, "expected the flag \"i\" or \"]\", found \"ii\""},
        BadText{"[text~='a'x]", 11, "expected the flag \"i\" or \"]\", found \"x\""},
        BadText{"[text='a'i]", 10, "expected \"]\", found \"i\""},
        BadText{"['a]", 5, "expected \"'\", found the end of the name"}));

INSTANTIATE_TEST_SUITE_P(
    Colons, ObjectNameErrors,
    testing::Values(
        BadText{":", 2, "expected \"visible\", \"hidden\" or \"nth\", found the end of the name"},
        BadText{":Visible", 2, "expected \"visible\", \"hidden\" or \"nth\", found \"Visible\""},
        BadText{":visible:hidden", 9, "expected each key once, found another \"visible\""},
        BadText{":nth", 5, "expected \"(\", found the end of the name"},
        BadText{":nth()", 6, "expected a number from 1 to 2147483647, found \")\""},
        BadText{":nth(0)", 6, "expected a number from 1 to 2147483647, found \"0\""},
        BadText{":nth(-1)", 6, "expected a number from 1 to 2147483647, found \"-\""},
        BadText{":nth(2147483648)", 6, "expected a number from 1 to 2147483647, found \"2147483648\""},
        BadText{":nth(2n+1)", 7, "expected \")\", found \"n\""},
        BadText{":nth(2", 7, "expected \")\", found the end of the name"},
        BadText{":nth(1):nth(1)", 8, "expected each key once, found another \"occurrence\""}));

INSTANTIATE_TEST_SUITE_P(
    Aliases, ObjectNameErrors,
    testing::Values(
        BadText{"@", 2, "expected the name of an alias, found the end of the name"},
        BadText{"@1", 2, "expected the name of an alias, found \"1\""},
        BadText{"@ok[text='a']", 4, "expected a blank or the end of the name, found \"[\""},
        BadText{"@ok:nth(2)", 4, "expected a blank or the end of the name, found \":\""},
        BadText{"Window @ok", 8, "expected a step other than an alias, found \"@\""},
        BadText{"Button@ok", 7, "expected \"#\", \"[\", \":\", a blank or the end of the name, found \"@\""}));

TEST(ObjectNameErrors, cutLongWordsInMessages)
{
    ObjectName::ParseError error;
    ObjectName::parse(u':' + QString(100000, u'x'), &error);
    EXPECT_EQ(error.column, 2);
    EXPECT_LT(error.message.size(), 120);
    ObjectName::parse(QStringLiteral("['%1'='1']['%1'='1']").arg(QString(100000, u'x')), &error);
    EXPECT_EQ(error.column, 100010);
    EXPECT_LT(error.message.size(), 120);
}

TEST(ObjectNameErrors, areForgottenByTheNextText)
{
    ObjectName::ParseError error;
    ObjectName::parse(QStringLiteral("!"), &error);
    ASSERT_TRUE(static_cast<bool>(error));
    EXPECT_FALSE(ObjectName::parse(QStringLiteral("Button"), &error).isEmpty());
    EXPECT_FALSE(static_cast<bool>(error));
    EXPECT_TRUE(error.message.isEmpty());
}

QString randomGarbage(QRandomGenerator *random)
{
    static const QString pieces[] = {
        QStringLiteral("Button"), QStringLiteral("#"), QStringLiteral("ok"), QStringLiteral("["),
        QStringLiteral("]"), QStringLiteral("text"), QStringLiteral("="), QStringLiteral("*="),
        QStringLiteral("^="), QStringLiteral("$="), QStringLiteral("~="), QStringLiteral("\""),
        QStringLiteral("'"), QStringLiteral("\\"), QStringLiteral("/"), QStringLiteral("i"),
        QStringLiteral(":visible"), QStringLiteral(":hidden"), QStringLiteral(":nth("), QStringLiteral(")"),
        QStringLiteral("2"), QStringLiteral(" "), QStringLiteral("\n"), QStringLiteral("@"),
        QStringLiteral("container"), QStringLiteral("[text=\"a\"]"), QStringLiteral("[x=/a/]"), QStringLiteral(":"),
        QString(QChar(0xd83d)), QString(QChar(0)), QStringLiteral("ä"),
    };
    QString text;
    for (quint32 count = random->bounded(14u); count > 0; --count)
        text += pieces[random->bounded(static_cast<quint32>(std::size(pieces)))];
    return text;
}

TEST(ObjectNameErrors, randomTextIsEitherANameOrAnErrorInsideTheText)
{
    QRandomGenerator random(20240607);
    int names = 0;
    int errors = 0;
    for (int i = 0; i < 100000; ++i) {
        const QString text = randomGarbage(&random);
        ObjectName::ParseError error;
        const ObjectName name = ObjectName::parse(text, &error);
        if (error) {
            ++errors;
            ASSERT_TRUE(name.isEmpty()) << qPrintable(text);
            ASSERT_GE(error.column, 1) << qPrintable(text);
            ASSERT_LE(error.column, text.size() + 1) << qPrintable(text);
            ASSERT_TRUE(error.message.startsWith(QStringLiteral("expected "))) << qPrintable(error.message);
            ASSERT_TRUE(error.message.contains(QStringLiteral(", found "))) << qPrintable(error.message);
        } else {
            ++names;
            const QString canonical = name.qualifiedName();
            ASSERT_EQ(ObjectName(canonical), name) << qPrintable(text);
            ASSERT_EQ(ObjectName(canonical).qualifiedName(), canonical) << qPrintable(text);
        }
    }
    // Both must have been tried often enough to mean something.
    EXPECT_GT(names, 5000);
    EXPECT_GT(errors, 5000);
}

} // namespace
