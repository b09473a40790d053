#include "hook/logger.h"

namespace Vantle {

Logger::~Logger() = default;

} // namespace Vantle
