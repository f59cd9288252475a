#pragma once

#include <assimp/IOSystem.hpp>

#include <QString>
#include <QStringList>

#include <set>

namespace editor {

/// How a scene writes the names of other files: as they are, or with %20 for a space.
enum class FileNames
{
    Plain,
    PercentEncoded,
};

/// The files an importer gets to see: regular ones beside or below the scene, for reading. Links
/// count where they lead to.
class SceneFolder final : public Assimp::IOSystem
{
public:
    /// `scenePath` is absolute. Makes its folder the current one.
    SceneFolder(const QString& scenePath, FileNames names);

    /// Where importers find the scene.
    const QString& scene() const { return m_scene; }
    /// What was asked for outside of it, or is no regular file; a sentence each.
    const QStringList& refusals() const { return m_refusals; }

    bool Exists(const char* path) const override;
    char getOsSeparator() const override { return '/'; }
    Assimp::IOStream* Open(const char* path, const char* mode) override;
    void Close(Assimp::IOStream* file) override;
    bool CreateDirectory(const std::string&) override { return false; }
    bool ChangeDirectory(const std::string&) override { return false; }
    bool DeleteFile(const std::string&) override { return false; }

private:
    QString fileNamed(const char* path) const;
    /// Where the file is; empty when it is not there or not allowed.
    QString allowedPath(const char* path) const;
    void refuse(const QString& reason) const;

    // With a slash behind it.
    QString m_folder;
    QString m_scene;
    FileNames m_names;
    std::set<QString> m_opened;
    mutable QStringList m_refusals;
};

} // namespace editor
