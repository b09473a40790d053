#pragma once

#include "hook/hookglobal.h"

#include <QtCore/QMap>
#include <QtCore/QString>

#include <memory>

QT_FORWARD_DECLARE_CLASS(QRegularExpression)

namespace Vantle {

/// One value in an object's name, and how a text is held against it.
class VANTLEHOOK_EXPORT PropertyValue
{
public:
    enum Modifiers : qint32 {
        Equals = 0,
        Contains = 1,
        BeginsWith = 2,
        EndsWith = 3,
        MatchesRegularExpression = 4,
        MatchesRegularExpressionCaseInsensitively = 5,
    };

    enum Type : qint32 {
        Text = 0,
    };

    /// An empty text that only an empty text equals.
    PropertyValue() = default;
    PropertyValue(const QString &value, Modifiers modifiers, Type type);

    const QString &stringValue() const noexcept { return m_value; }
    Modifiers modifiers() const noexcept { return m_modifiers; }
    Type type() const noexcept { return m_type; }

    /// Whether \p text satisfies the value. Comparisons are case-sensitive
    /// unless the modifier says otherwise. A regular expression may match
    /// anywhere in the text; one that is not valid matches nothing.
    bool matches(const QString &text) const;

    bool operator==(const PropertyValue &other) const
    {
        return m_value == other.m_value && m_modifiers == other.m_modifiers && m_type == other.m_type;
    }

private:
    QString m_value;
    Modifiers m_modifiers = Equals;
    Type m_type = Text;
    // A lookup holds one value against thousands of items: it is compiled
    // once, at the first match, and all copies share it. Null for the other modifiers.
    std::shared_ptr<const QRegularExpression> m_regularExpression;
};

/// The name of an object: a set of properties that single it out below its
/// container, which stands in the set as the text of its own name.
///
/// The text form reads like a CSS selector:
///
///     ApplicationWindow Button#save[text="Save as…"]:visible:nth(2)
///
/// docs/names.md has the grammar.
class VANTLEHOOK_EXPORT ObjectName
{
public:
    using Properties = QMap<QString, PropertyValue>;

    /// Why a text is no name, and where.
    struct ParseError
    {
        int column = 0;   ///< counted from 1, in UTF-16 code units; 0 means no error
        QString message;  ///< what was expected and what was found
        explicit operator bool() const noexcept { return column != 0; }
    };

    ObjectName() = default;
    /// Reads the text form. A text that does not parse gives an empty name, as
    /// does a blank one. An alias (`@login`) becomes the property "alias".
    explicit ObjectName(const QString &text);
    /// Same, and says what is wrong in \p error, which must not be null.
    static ObjectName parse(const QString &text, ParseError *error);

    bool isEmpty() const noexcept { return m_properties.isEmpty(); }
    /// The value of \p key; for an absent key one whose text is empty.
    PropertyValue property(const QString &key) const;
    void setProperty(const QString &key, const PropertyValue &value);
    void removeProperty(const QString &key);
    /// All properties in ascending order of their keys.
    const Properties &properties() const noexcept { return m_properties; }

    /// Which of several matches is meant, counted from 1; 1 for a name that
    /// doesn't say, 0 for a value that is no number.
    int occurrenceValue() const;

    /// The canonical text form, which parses back to an equal name; empty for
    /// an empty name.
    QString qualifiedName() const;

    bool operator==(const ObjectName &) const = default;

private:
    Properties m_properties;
};

} // namespace Vantle
