#include "tool/descriptor.h"

#include <cerrno>

#include <unistd.h>

namespace Vantle::Tool {

bool writeWhole(int descriptor, const QByteArray &bytes)
{
    qsizetype written = 0;
    while (written < bytes.size()) {
        const auto rest = static_cast<size_t>(bytes.size() - written);
        const ssize_t result = ::write(descriptor, bytes.constData() + written, rest);
        if (result >= 0)
            written += result;
        else if (errno != EINTR)
            return false;
    }
    return true;
}

} // namespace Vantle::Tool
