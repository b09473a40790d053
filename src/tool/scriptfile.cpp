#include "tool/scriptfile.h"

#include <QtCore/QFileInfo>

#include <cerrno>

#include <unistd.h>

namespace Vantle::Tool {

namespace {

bool isRegular(const QFile &file)
{
    return QFileInfo(file).isFile();
}

/// Pipes and terminals have nothing to be synchronised; that is no failure.
bool synchronise(const QFile &file)
{
    return ::fdatasync(file.handle()) == 0 || errno == EINVAL || errno == EROFS || errno == ENOTSUP;
}

} // namespace

ScriptFile::~ScriptFile()
{
    if (m_created && !m_begun)
        m_file.remove();
}

bool ScriptFile::open(const QString &path)
{
    m_file.setFileName(path);
    const bool existed = QFileInfo::exists(path);
    // Append mode opens without cutting the file, and keeps the lines of two
    // recordings into one file whole.
    if (!m_file.open(QIODevice::WriteOnly | QIODevice::Append | QIODevice::Unbuffered))
        return fail();
    m_created = !existed && isRegular(m_file);
    return true;
}

bool ScriptFile::append(const QString &line)
{
    if (!m_begun) {
        m_begun = true;
        if (isRegular(m_file) && !m_file.resize(0))
            return fail();
    }
    const QByteArray bytes = line.toUtf8() + '\n';
    if (m_file.write(bytes) != bytes.size())
        return fail();
    if (!synchronise(m_file)) {
        m_error = QStringLiteral("cannot write \"%1\": %2").arg(m_file.fileName(), qt_error_string(errno));
        return false;
    }
    return true;
}

bool ScriptFile::fail()
{
    m_error = QStringLiteral("cannot write \"%1\": %2").arg(m_file.fileName(), m_file.errorString());
    return false;
}

} // namespace Vantle::Tool
