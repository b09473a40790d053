#include "hook/objectname.h"

#include "hook/objectnameparser_p.h"
#include "hook/objectnameprinter_p.h"

#include <QtCore/QRegularExpression>

namespace Vantle {

PropertyValue::PropertyValue(const QString &value, Modifiers modifiers, Type type)
    : m_value(value)
    , m_modifiers(modifiers)
    , m_type(type)
{
    if (modifiers == MatchesRegularExpression) {
        m_regularExpression = std::make_shared<const QRegularExpression>(value);
    } else if (modifiers == MatchesRegularExpressionCaseInsensitively) {
        m_regularExpression = std::make_shared<const QRegularExpression>(
            value, QRegularExpression::CaseInsensitiveOption);
    }
}

bool PropertyValue::matches(const QString &text) const
{
    switch (m_modifiers) {
    case Equals: return text == m_value;
    case Contains: return text.contains(m_value);
    case BeginsWith: return text.startsWith(m_value);
    case EndsWith: return text.endsWith(m_value);
    case MatchesRegularExpression:
    case MatchesRegularExpressionCaseInsensitively:
        return m_regularExpression->isValid() && m_regularExpression->match(text).hasMatch();
    }
    return false;
}

ObjectName::ObjectName(const QString &text)
{
    ParseError error;
    *this = parse(text, &error);
}

ObjectName ObjectName::parse(const QString &text, ParseError *error)
{
    *error = {};
    ObjectNameSteps steps = readObjectNameSteps(text, error);
    ObjectName name;
    if (steps.empty())
        return name;
    name.m_properties = steps.back();
    steps.pop_back();
    if (!steps.empty())
        name.setProperty(NameKeys::container, {canonicalObjectName(steps), PropertyValue::Equals, PropertyValue::Text});
    return name;
}

PropertyValue ObjectName::property(const QString &key) const
{
    return m_properties.value(key);
}

void ObjectName::setProperty(const QString &key, const PropertyValue &value)
{
    m_properties.insert(key, value);
}

void ObjectName::removeProperty(const QString &key)
{
    m_properties.remove(key);
}

int ObjectName::occurrenceValue() const
{
    const auto occurrence = m_properties.constFind(NameKeys::occurrence);
    return occurrence == m_properties.cend() ? 1 : occurrence->stringValue().toInt();
}

QString ObjectName::qualifiedName() const
{
    return canonicalObjectName(m_properties);
}

} // namespace Vantle
