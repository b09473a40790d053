#include "hook/objectname.h"

#include <gtest/gtest.h>

#include <QtCore/QRandomGenerator>

using Vantle::ObjectName;
using Vantle::PropertyValue;

namespace {

/// Makes names out of whatever could confuse a reader of their text.
class RandomNames
{
public:
    ObjectName name(int depth = 0)
    {
        ObjectName result;
        for (quint32 count = m_random.bounded(6u); count > 0; --count)
            result.setProperty(key(), value(text(depth)));
        if (chance(3))
            result.setProperty(QStringLiteral("container"), container(depth));
        return result;
    }

private:
    bool chance(quint32 oneIn) { return m_random.bounded(oneIn) == 0; }

    template<std::size_t N>
    QString oneOf(const QString (&texts)[N])
    {
        return texts[m_random.bounded(static_cast<quint32>(N))];
    }

    QString key()
    {
        static const QString keys[] = {
            QStringLiteral("alias"), QStringLiteral("type"), QStringLiteral("id"), QStringLiteral("visible"),
            QStringLiteral("occurrence"), QStringLiteral("text"), QStringLiteral("container"),
            QStringLiteral("Type"), QStringLiteral("odd key"), QString(),
        };
        return chance(4) ? characters() : oneOf(keys);
    }

    QString text(int depth)
    {
        static const QString texts[] = {
            QStringLiteral("true"), QStringLiteral("false"), QStringLiteral("1"), QStringLiteral("0"),
            QStringLiteral("-1"), QStringLiteral("01"), QStringLiteral("17"), QStringLiteral("2147483648"),
            QStringLiteral("Button"), QStringLiteral("_x9"), QStringLiteral("9x"), QStringLiteral("Ns::Type"),
            QStringLiteral("@ok"), QStringLiteral("a.b-c"), QString(),
        };
        if (depth < 3 && chance(6))
            return name(depth + 1).qualifiedName();
        return chance(2) ? characters() : oneOf(texts);
    }

    PropertyValue value(const QString &text)
    {
        const auto modifiers = chance(2) ? PropertyValue::Equals
                                         : static_cast<PropertyValue::Modifiers>(m_random.bounded(6));
        return PropertyValue(text, modifiers, PropertyValue::Text);
    }

    PropertyValue container(int depth)
    {
        QString text = depth < 3 ? name(depth + 1).qualifiedName() : characters();
        if (chance(8))
            text += u' ';
        return chance(8) ? value(text) : PropertyValue(text, PropertyValue::Equals, PropertyValue::Text);
    }

    QString characters()
    {
        static const QString alphabet = QStringLiteral("\\\\\\\"'//n\n\r\t []=*^$~:#@()iaZ_0é€") + QChar(0)
            + QChar(0xd83d) + QChar(0xde00) + QChar(0x2028) + QChar(0xfeff);
        QString result;
        for (quint32 count = m_random.bounded(9u); count > 0; --count)
            result += alphabet.at(m_random.bounded(static_cast<int>(alphabet.size())));
        return result;
    }

    QRandomGenerator m_random{4711};
};

TEST(ObjectNameRoundTrip, everyNameIsReadBackFromItsCanonicalText)
{
    RandomNames names;
    for (int i = 0; i < 100000; ++i) {
        const ObjectName name = names.name();
        const QString text = name.qualifiedName();
        ObjectName::ParseError error;
        const ObjectName read = ObjectName::parse(text, &error);
        ASSERT_FALSE(static_cast<bool>(error))
            << qPrintable(text) << ", column " << error.column << ": " << qPrintable(error.message);
        ASSERT_EQ(read, name) << qPrintable(text);
        ASSERT_EQ(read.qualifiedName(), text);
    }
}

TEST(ObjectNameRoundTrip, theCanonicalTextIsOneLine)
{
    RandomNames names;
    for (int i = 0; i < 10000; ++i)
        ASSERT_FALSE(names.name().qualifiedName().contains(u'\n'));
}

TEST(ObjectNameRoundTrip, everyCharacterCanStandInKeysAndValues)
{
    for (uint c = 0; c <= 0xffff; ++c) {
        const QString character{QChar(static_cast<char16_t>(c))};
        for (const auto modifiers : {PropertyValue::Equals, PropertyValue::MatchesRegularExpression}) {
            ObjectName name;
            name.setProperty(character, PropertyValue(character, modifiers, PropertyValue::Text));
            name.setProperty(QStringLiteral("type"), PropertyValue(character, modifiers, PropertyValue::Text));
            ASSERT_EQ(ObjectName(name.qualifiedName()), name) << c;
        }
    }
}

} // namespace
