#include "extensions.h"

#include "report.h"

#include <kyr_scene_outline/scene_browser_extension.h>

#include <QDir>
#include <QLibrary>

namespace editor {

Extensions::Extensions(const QString& folder)
{
    const QDir files(folder);
    for (const QString& name : files.entryList(QDir::Files, QDir::Name)) {
        if (QLibrary::isLibrary(name))
            load(files.filePath(name));
    }
}

Extensions::~Extensions()
{
    for (auto loader = m_loaders.rbegin(); loader != m_loaders.rend(); ++loader)
        (*loader)->unload();
}

void Extensions::load(const QString& file)
{
    auto loader = std::make_unique<QPluginLoader>(file);
    auto* extension = qobject_cast<ISceneBrowserExtension*>(loader->instance());
    if (!extension) {
        reportFailure(QStringLiteral("Extension %1 is left out: %2")
                          .arg(file, loader->isLoaded() ? QStringLiteral("it is none")
                                                        : loader->errorString()));
        loader->unload();
        return;
    }
    m_extensions.push_back(extension);
    m_loaders.push_back(std::move(loader));
}

void Extensions::attach(SceneBrowserData& browser, QQmlEngine& engine)
{
    for (ISceneBrowserExtension* extension : m_extensions)
        extension->attach(browser, engine);
}

void Extensions::detach(SceneBrowserData& browser)
{
    for (auto extension = m_extensions.rbegin(); extension != m_extensions.rend(); ++extension)
        (*extension)->detach(browser);
}

} // namespace editor
