#include "scene_folder.h"

#include <editor/files/process_limits.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <assimp/IOStream.hpp>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace editor {

namespace {

constexpr int mostRefusals = 20;

QString tr(const char* text)
{
    return QCoreApplication::translate("editor::SceneImport", text);
}

class InputFile final : public Assimp::IOStream
{
public:
    explicit InputFile(int descriptor)
    {
        m_file.open(descriptor, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle);
    }

    std::size_t Read(void* buffer, std::size_t size, std::size_t count) override
    {
        if (size == 0 || count == 0)
            return 0;
        const qint64 left = m_file.size() - m_file.pos();
        const std::size_t whole = std::min(count, std::size_t(left) / size);
        const qint64 read = m_file.read(static_cast<char*>(buffer), qint64(whole * size));
        return read < 0 ? 0 : std::size_t(read) / size;
    }
    std::size_t Write(const void*, std::size_t, std::size_t) override { return 0; }
    aiReturn Seek(std::size_t offset, aiOrigin origin) override
    {
        const qint64 base = origin == aiOrigin_SET   ? 0
                            : origin == aiOrigin_CUR ? m_file.pos()
                                                     : m_file.size();
        const qint64 target = base + qint64(offset);
        return target >= 0 && target <= m_file.size() && m_file.seek(target) ? aiReturn_SUCCESS
                                                                             : aiReturn_FAILURE;
    }
    std::size_t Tell() const override { return std::size_t(m_file.pos()); }
    std::size_t FileSize() const override { return std::size_t(m_file.size()); }
    void Flush() override {}

private:
    QFile m_file;
};

} // namespace

SceneFolder::SceneFolder(const QString& scenePath, FileNames names)
    : m_folder(QFileInfo(QFileInfo(scenePath).absolutePath()).canonicalFilePath()), m_names(names)
{
    // Importers may name files without their folder.
    QDir::setCurrent(m_folder);
    if (!m_folder.endsWith(QLatin1Char('/')))
        m_folder += QLatin1Char('/');
    m_scene = m_folder + QFileInfo(scenePath).fileName();
}

bool SceneFolder::Exists(const char* path) const
{
    return !allowedPath(path).isEmpty();
}

Assimp::IOStream* SceneFolder::Open(const char* path, const char* mode)
{
    const QString allowed = mode[0] == 'r' ? allowedPath(path) : QString();
    if (allowed.isEmpty())
        return nullptr;
    // A pipe would keep the opening waiting.
    const int descriptor = open(QFile::encodeName(allowed).constData(),
                                O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOFOLLOW);
    struct stat about
    {};
    if (descriptor < 0)
        return nullptr;
    if (fstat(descriptor, &about) != 0 || !S_ISREG(about.st_mode)) {
        close(descriptor);
        return nullptr;
    }
    if (m_opened.insert(allowed).second)
        allowForInput(about.st_size);
    return new InputFile(descriptor);
}

void SceneFolder::Close(Assimp::IOStream* file)
{
    delete file;
}

// A file that has the name as it is written comes first: not every writer encodes it.
QString SceneFolder::fileNamed(const char* path) const
{
    const QString name = QFile::decodeName(path);
    if (m_names == FileNames::Plain || name == m_scene || QFileInfo::exists(name))
        return name;
    return QFile::decodeName(QByteArray::fromPercentEncoding(path));
}

QString SceneFolder::allowedPath(const char* path) const
{
    const QString name = fileNamed(path);
    const QString shown = name.startsWith(m_folder) ? name.mid(m_folder.size()) : name;
    if (shown.contains(QLatin1String("://"))) {
        refuse(
            tr("\"%1\" is an address; only files beside or below the scene are read").arg(shown));
        return {};
    }
    const QFileInfo file(name);
    const QString target = file.canonicalFilePath();
    const QString clean = QDir::cleanPath(file.absoluteFilePath());
    // A path that leads out is refused whether or not there is something. The scene itself may be
    // a link: it is what the user has chosen.
    const bool leadsOut = !clean.startsWith(m_folder) ||
                          (!target.isEmpty() && !target.startsWith(m_folder) && clean != m_scene);
    if (leadsOut) {
        refuse(tr("\"%1\" is neither beside nor below the scene").arg(shown));
        return {};
    }
    if (target.isEmpty())
        return {};
    if (!file.isFile()) {
        if (!file.isDir())
            refuse(tr("\"%1\" is no regular file").arg(shown));
        return {};
    }
    return target;
}

void SceneFolder::refuse(const QString& reason) const
{
    if (m_refusals.size() < mostRefusals && !m_refusals.contains(reason))
        m_refusals.append(reason);
}

} // namespace editor
