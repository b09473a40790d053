#include "wrappers/qt/extensions/qtquickcommon/compression/statementrecorder.h"

namespace Vantle::QtWrapper {

StatementRecorder::~StatementRecorder() = default;

} // namespace Vantle::QtWrapper
