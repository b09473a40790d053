#include "hook/objectnameparser_p.h"

#include <algorithm>
#include <limits>

namespace Vantle {

namespace {

bool isBlank(QChar c)
{
    return c == u' ' || c == u'\t' || c == u'\n' || c == u'\r';
}

bool isDigit(QChar c)
{
    return c >= u'0' && c <= u'9';
}

bool isIdentifierStart(QChar c)
{
    return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') || c == u'_';
}

bool isIdentifierPart(QChar c)
{
    return isIdentifierStart(c) || isDigit(c);
}

bool isAliasPart(QChar c)
{
    return isIdentifierPart(c) || c == u'.' || c == u'-';
}

template<typename Predicate>
bool startsAsIdentifierAndAll(QStringView text, Predicate isPart)
{
    return !text.isEmpty() && isIdentifierStart(text.front()) && std::all_of(text.begin(), text.end(), isPart);
}

/// Reads one text from left to right. Every read... function stands at what it
/// is to read when it is called and behind it when it returns true; false
/// means that the failure is noted and the reading over.
class Parser
{
public:
    Parser(QStringView text, ObjectName::ParseError *error) : m_text(text), m_error(error) {}

    ObjectNameSteps read()
    {
        skipBlanks();
        while (!atEnd()) {
            if (!readStep())
                return {};
            skipBlanks();
        }
        return std::move(m_steps);
    }

private:
    bool readStep()
    {
        m_step.clear();
        if (at(u'@')) {
            if (!readAlias())
                return false;
        } else {
            if (isIdentifierStart(current()))
                m_step.insert(NameKeys::type, PropertyValue(takeWord(), {}, {}));
            while (!atEnd() && !isBlank(current())) {
                if (!readPart())
                    return false;
            }
        }
        m_steps.push_back(m_step);
        return true;
    }

    // An alias stands for a complete name, so nothing can be ahead of it or be
    // added to it.
    bool readAlias()
    {
        if (!m_steps.empty())
            return failExpecting(QStringLiteral("a step other than an alias"));
        ++m_position;
        if (atEnd() || !isIdentifierStart(current()))
            return failExpecting(QStringLiteral("the name of an alias"));
        m_step.insert(NameKeys::alias, PropertyValue(takeWhile(isAliasPart), {}, {}));
        return atEnd() || isBlank(current()) || failExpecting(QStringLiteral("a blank or the end of the name"));
    }

    bool readPart()
    {
        switch (current().unicode()) {
        case u'#': return readId();
        case u'[': return readBrackets();
        case u':': return readColon();
        default: break;
        }
        return failExpecting(!m_step.isEmpty()  ? QStringLiteral("\"#\", \"[\", \":\", a blank or the end of the name")
                             : m_steps.empty() ? QStringLiteral("a type, \"#\", \"[\", \":\" or \"@\"")
                                               : QStringLiteral("a type, \"#\", \"[\" or \":\""));
    }

    bool readId()
    {
        const qsizetype start = m_position++;
        if (atEnd() || !isIdentifierStart(current()))
            return failExpecting(QStringLiteral("an id"));
        return setProperty(start, NameKeys::id, {takeWord(), {}, {}});
    }

    bool readColon()
    {
        const qsizetype start = m_position++;
        const qsizetype wordStart = m_position;
        const QString word = takeWord();
        if (word == QLatin1String("visible"))
            return setProperty(start, NameKeys::visible, {NameValues::yes, {}, {}});
        if (word == QLatin1String("hidden"))
            return setProperty(start, NameKeys::visible, {NameValues::no, {}, {}});
        if (word == QLatin1String("nth"))
            return readNth(start);
        m_position = wordStart;
        return failExpecting(QStringLiteral("\"visible\", \"hidden\" or \"nth\""));
    }

    bool readNth(qsizetype start)
    {
        if (!readCharacter(u'('))
            return false;
        skipBlanks();
        const qsizetype numberStart = m_position;
        const int number = takeWhile(isDigit).toInt();
        if (number < 1) {
            m_position = numberStart;
            return failExpecting(QStringLiteral("a number from 1 to %1").arg(std::numeric_limits<int>::max()));
        }
        skipBlanks();
        return readCharacter(u')') && setProperty(start, NameKeys::occurrence, {QString::number(number), {}, {}});
    }

    bool readBrackets()
    {
        ++m_position;
        skipBlanks();
        const qsizetype start = m_position;
        QString key;
        if (!readKey(&key))
            return false;
        skipBlanks();
        PropertyValue value;
        if (!readComparison(&value))
            return false;
        skipBlanks();
        return readCharacter(u']') && setProperty(start, key, value);
    }

    bool readKey(QString *key)
    {
        if (atQuote())
            return readQuoted(key);
        if (atEnd() || !isIdentifierStart(current()))
            return failExpecting(QStringLiteral("a key"));
        *key = takeWord();
        return true;
    }

    bool readComparison(PropertyValue *value)
    {
        PropertyValue::Modifiers modifiers = PropertyValue::Equals;
        if (at(u'*'))
            modifiers = PropertyValue::Contains;
        else if (at(u'^'))
            modifiers = PropertyValue::BeginsWith;
        else if (at(u'$'))
            modifiers = PropertyValue::EndsWith;
        else if (at(u'~'))
            modifiers = PropertyValue::MatchesRegularExpression;
        else if (!at(u'='))
            return failExpecting(QStringLiteral("\"=\", \"*=\", \"^=\", \"$=\" or \"~=\""));
        if (modifiers != PropertyValue::Equals)
            ++m_position;
        if (!readCharacter(u'='))
            return false;
        skipBlanks();
        QString text;
        if (modifiers == PropertyValue::Equals && at(u'/')) {
            modifiers = PropertyValue::MatchesRegularExpression;
            if (!readRegularExpression(&text))
                return false;
        } else if (!atQuote()) {
            return failExpecting(modifiers == PropertyValue::Equals
                                     ? QStringLiteral("a value in quotes or a regular expression in slashes")
                                     : QStringLiteral("a value in quotes"));
        } else if (!readQuoted(&text)) {
            return false;
        }
        if (modifiers == PropertyValue::MatchesRegularExpression && !readFlags(&modifiers))
            return false;
        *value = PropertyValue(text, modifiers, PropertyValue::Text);
        return true;
    }

    bool readFlags(PropertyValue::Modifiers *modifiers)
    {
        if (atEnd() || !isIdentifierPart(current()))
            return true;
        const qsizetype start = m_position;
        if (takeWord() != QLatin1String("i")) {
            m_position = start;
            return failExpecting(QStringLiteral("the flag \"i\" or \"]\""));
        }
        *modifiers = PropertyValue::MatchesRegularExpressionCaseInsensitively;
        return true;
    }

    bool readQuoted(QString *text)
    {
        const QChar quote = current();
        ++m_position;
        while (!atEnd() && current() != quote) {
            QChar c = current();
            if (c == u'\\') {
                ++m_position;
                if (at(u'n'))
                    c = u'\n';
                else if (at(u'\\') || atQuote())
                    c = current();
                else
                    return failExpecting(QStringLiteral("a quote, a backslash or \"n\" behind the backslash"));
            }
            text->append(c);
            ++m_position;
        }
        return readCharacter(quote);
    }

    // Only the slash has an escape of its own here. All other pairs of a
    // backslash and a character are the regular expression's.
    bool readRegularExpression(QString *pattern)
    {
        ++m_position;
        while (!atEnd() && !at(u'/')) {
            if (at(u'\\')) {
                ++m_position;
                if (atEnd())
                    break;
                if (!at(u'/'))
                    pattern->append(u'\\');
            }
            pattern->append(current());
            ++m_position;
        }
        return readCharacter(u'/');
    }

    bool readCharacter(QChar c)
    {
        if (!at(c))
            return failExpecting(inQuotes(c));
        ++m_position;
        return true;
    }

    bool setProperty(qsizetype start, const QString &key, const PropertyValue &value)
    {
        if (key == NameKeys::container && !m_steps.empty())
            return fail(start, QStringLiteral("expected no container besides the steps ahead, found a \"container\""));
        if (m_step.contains(key))
            return fail(start, QStringLiteral("expected each key once, found another \"%1\"").arg(shortened(key)));
        m_step.insert(key, value);
        return true;
    }

    bool atEnd() const { return m_position == m_text.size(); }
    bool at(QChar c) const { return !atEnd() && current() == c; }
    bool atQuote() const { return at(u'"') || at(u'\''); }
    QChar current() const { return m_text[m_position]; }

    void skipBlanks()
    {
        while (!atEnd() && isBlank(current()))
            ++m_position;
    }

    template<typename Predicate>
    QString takeWhile(Predicate belongs)
    {
        const qsizetype start = m_position;
        while (!atEnd() && belongs(current()))
            ++m_position;
        return m_text.sliced(start, m_position - start).toString();
    }

    QString takeWord() { return takeWhile(isIdentifierPart); }

    bool failExpecting(const QString &expected)
    {
        return fail(m_position, QStringLiteral("expected %1, found %2").arg(expected, found()));
    }

    bool fail(qsizetype position, const QString &message)
    {
        m_error->column = static_cast<int>(position) + 1;
        m_error->message = message;
        return false;
    }

    /// What stands at the current position, for people: a word or a character.
    QString found()
    {
        if (atEnd())
            return QStringLiteral("the end of the name");
        const qsizetype start = m_position;
        const QString word = takeWord();
        m_position = start;
        return word.isEmpty() ? inQuotes(current()) : QStringLiteral("\"%1\"").arg(shortened(word));
    }

    static QString inQuotes(QChar c)
    {
        if (c == u'"')
            return QStringLiteral("'\"'");
        if (c.isPrint() && !c.isSurrogate())
            return QStringLiteral("\"%1\"").arg(c);
        return QStringLiteral("U+%1").arg(static_cast<uint>(c.unicode()), 4, 16, QLatin1Char('0')).toUpper();
    }

    static QString shortened(const QString &text)
    {
        constexpr qsizetype limit = 40;
        return text.size() <= limit ? text : text.first(limit) + u'…';
    }

    QStringView m_text;
    qsizetype m_position = 0;
    ObjectName::ParseError *m_error;
    ObjectName::Properties m_step;
    ObjectNameSteps m_steps;
};

} // namespace

ObjectNameSteps readObjectNameSteps(QStringView text, ObjectName::ParseError *error)
{
    return Parser(text, error).read();
}

bool isPlainIdentifier(QStringView text)
{
    return startsAsIdentifierAndAll(text, isIdentifierPart);
}

bool isPlainAlias(QStringView text)
{
    return startsAsIdentifierAndAll(text, isAliasPart);
}

} // namespace Vantle
