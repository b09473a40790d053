#include "tool/scriptfile.h"

#include "tool/descriptor.h"
#include "tool/outputfile.h"

#include <QtCore/QFile>

#include <cerrno>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Vantle::Tool {

namespace {

constexpr int openFlags = O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC;
constexpr mode_t newFileMode = 0666;

bool isRegular(int descriptor)
{
    struct stat status = {};
    return ::fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode);
}

/// Takes the file for this recording. False if another one has it. File systems
/// that know no locks keep nobody out.
bool lock(int descriptor)
{
    return !isRegular(descriptor) || ::flock(descriptor, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
}

} // namespace

ScriptFile::~ScriptFile()
{
    if (m_created && !m_begun)
        QFile::remove(m_path);
    if (m_descriptor >= 0)
        ::close(m_descriptor);
}

bool ScriptFile::open(const QString &path)
{
    m_path = path;
    const QByteArray name = QFile::encodeName(path);
    m_descriptor = ::open(name.constData(), openFlags | O_EXCL, newFileMode);
    m_created = m_descriptor >= 0;
    if (!m_created && errno == EEXIST)
        m_descriptor = ::open(name.constData(), openFlags, newFileMode);
    if (m_descriptor < 0)
        return fail();
    if (lock(m_descriptor))
        return true;
    m_error = QStringLiteral("cannot write \"%1\": another recording is writing to it").arg(path);
    return false;
}

bool ScriptFile::append(const QString &line)
{
    const QByteArray bytes = line.toUtf8() + '\n';
    if (m_begun)
        return writeWhole(m_descriptor, bytes) || fail();
    return begin(bytes) || fail();
}

/// The old script goes when there is a new one that has its first line.
bool ScriptFile::begin(const QByteArray &line)
{
    const QByteArray target = linkTarget(m_path);
    if (!isRegular(m_descriptor) || m_created || !canBeReplaced(target)) {
        m_begun = true;
        // Pipes and devices have no content to be cut.
        return (!isRegular(m_descriptor) || ::ftruncate(m_descriptor, 0) == 0) && writeWhole(m_descriptor, line);
    }
    Replacement replacement(target);
    const int descriptor = replacement.open();
    if (descriptor < 0)
        return false;
    // Locked before it has the name that others open it by.
    if (!lock(descriptor) || !writeWhole(descriptor, line) || !replacement.commit()) {
        const int error = errno;
        ::close(descriptor);
        errno = error;
        return false;
    }
    ::close(m_descriptor);
    m_descriptor = descriptor;
    m_begun = true;
    return true;
}

bool ScriptFile::synchronise()
{
    // Pipes and devices have nothing to be synchronised; that is no failure.
    return ::fdatasync(m_descriptor) == 0 || errno == EINVAL || errno == EROFS || errno == ENOTSUP || fail();
}

bool ScriptFile::fail()
{
    m_error = QStringLiteral("cannot write \"%1\": %2").arg(m_path, qt_error_string(errno));
    return false;
}

} // namespace Vantle::Tool
