#include "tool/scriptfile.h"

#include "tool/descriptor.h"

#include <QtCore/QFile>

#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Vantle::Tool {

namespace {

// Appending keeps lines whole if two recordings write to one file.
constexpr int openFlags = O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC;
constexpr mode_t newFileMode = 0666;

/// Cuts a regular file; pipes and devices have no content to be cut.
bool removeContent(int descriptor)
{
    struct stat status = {};
    if (::fstat(descriptor, &status) != 0)
        return false;
    return !S_ISREG(status.st_mode) || ::ftruncate(descriptor, 0) == 0;
}

} // namespace

ScriptFile::~ScriptFile()
{
    if (m_descriptor >= 0)
        ::close(m_descriptor);
    if (m_created && !m_begun)
        QFile::remove(m_path);
}

bool ScriptFile::open(const QString &path)
{
    m_path = path;
    const QByteArray name = QFile::encodeName(path);
    m_descriptor = ::open(name.constData(), openFlags | O_EXCL, newFileMode);
    m_created = m_descriptor >= 0;
    if (!m_created && errno == EEXIST)
        m_descriptor = ::open(name.constData(), openFlags, newFileMode);
    return m_descriptor >= 0 || fail();
}

bool ScriptFile::append(const QString &line)
{
    const bool isFirst = !m_begun;
    m_begun = true;
    if (isFirst && !removeContent(m_descriptor))
        return fail();
    return writeWhole(m_descriptor, line.toUtf8() + '\n') || fail();
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
