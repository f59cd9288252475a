#include "scene_output.h"

#include <QCoreApplication>

#include <algorithm>
#include <utility>

#ifdef Q_OS_UNIX
#include <cerrno>
#include <cstring>
#include <unistd.h>
#endif

namespace editor {

namespace {

// Small enough for a cancel to be heard soon on a slow disk.
constexpr std::size_t pieceBytes = 256 * 1024;

} // namespace

SceneOutput::SceneOutput(const QString& path, WriteProgress progress)
    : m_file(path), m_progress(std::move(progress))
{
    // Unbuffered, so that each call tells how much the disk took.
    if (!m_file.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
        fail();
}

void SceneOutput::write(const void* data, std::size_t size)
{
    const char* next = static_cast<const char*>(data);
    while (size > 0) {
        // A disk that gets full takes a part first, and refuses the rest with the reason.
        const qint64 taken = m_file.write(next, qint64(std::min(size, pieceBytes)));
        if (taken <= 0)
            fail();
        next += taken;
        size -= std::size_t(taken);
        m_written += double(taken);
        if (m_expected > 0)
            report(m_shareBefore + (1 - m_shareBefore) * std::min(m_written / m_expected, 1.0));
    }
}

void SceneOutput::expect(double bytes, double shareBefore)
{
    m_expected = bytes;
    m_shareBefore = shareBefore;
    m_written = 0;
}

void SceneOutput::report(double share)
{
    if (m_progress && !m_progress(share))
        throw WriteFailure{QCoreApplication::translate("editor::SceneWriter", "it was cancelled")};
}

void SceneOutput::commit()
{
#ifdef Q_OS_UNIX
    // Where the disk reports late that it is full, committing would not notice.
    if (::fsync(m_file.handle()) != 0 && errno != EINVAL && errno != ENOTSUP)
        throw WriteFailure{QString::fromLocal8Bit(std::strerror(errno))};
#endif
    if (!m_file.commit())
        fail();
}

void SceneOutput::fail()
{
    throw WriteFailure{m_file.errorString()};
}

} // namespace editor
