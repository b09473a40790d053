#include "hook/eventdata.h"

namespace Vantle {

EventData::EventData(const Method *method, const QString &objectName, const ObjectList &arguments)
    : m_method(method)
    , m_objectName(objectName)
    , m_arguments(arguments)
{
}

EventData::EventData(const EventData &) = default;
EventData &EventData::operator=(const EventData &) = default;
EventData::~EventData() = default;

} // namespace Vantle
