#include "tracelib/variables.h"

#include <algorithm>
#include <utility>

namespace corvaline::tracelib {

namespace {

struct TextOf
{
    std::string operator()(const std::string &value) const { return value; }
    std::string operator()(long long value) const { return std::to_string(value); }
    std::string operator()(bool value) const { return value ? "true" : "false"; }
};

} // namespace

VariableValue::VariableValue(Content content) : m_content(std::move(content))
{
}

VariableValue VariableValue::stringValue(const char *value)
{
    return VariableValue(Content(std::string(value ? value : "")));
}

VariableValue VariableValue::numberValue(long long value)
{
    return VariableValue(Content(value));
}

VariableValue VariableValue::booleanValue(bool value)
{
    return VariableValue(Content(value));
}

unsigned long long VariableValue::convertToString(const VariableValue &value, char *buffer, unsigned long long size)
{
    const std::string text = std::visit(TextOf(), value.m_content);
    if (buffer && size > 0) {
        const std::size_t length = std::min<std::size_t>(text.size(), size - 1);
        std::copy_n(text.data(), length, buffer);
        buffer[length] = '\0';
    }
    return text.size() + 1;
}

AbstractVariable::~AbstractVariable() = default;

VariableSnapshot::VariableSnapshot() = default;
VariableSnapshot::~VariableSnapshot() = default;

void VariableSnapshot::add(AbstractVariable *variable)
{
    m_variables.push_back(variable);
}

unsigned long long VariableSnapshot::size() const noexcept
{
    return m_variables.size();
}

AbstractVariable *&VariableSnapshot::operator[](unsigned long long index)
{
    return m_variables[index];
}

} // namespace corvaline::tracelib
