#pragma once

#include <QPluginLoader>
#include <QString>

#include <memory>
#include <vector>

class ISceneBrowserExtension;
class QQmlEngine;
class SceneBrowserData;

namespace editor {

/// The browser extensions of a folder, loaded for as long as the object lives.
class Extensions final
{
public:
    /// Loads every plug-in in the folder. One that cannot be loaded is reported and left out.
    explicit Extensions(const QString& folder);
    /// Unloads the plug-ins. Whatever came from them has to be gone by then: detach them first, and
    /// delete the engine, which keeps descriptions of their types.
    ~Extensions();
    Extensions(const Extensions&) = delete;
    Extensions& operator=(const Extensions&) = delete;

    void attach(SceneBrowserData& browser, QQmlEngine& engine);
    /// In the reverse order of attaching.
    void detach(SceneBrowserData& browser);

private:
    void load(const QString& file);

    std::vector<std::unique_ptr<QPluginLoader>> m_loaders;
    std::vector<ISceneBrowserExtension*> m_extensions;
};

} // namespace editor
