#pragma once

#include <kyr_scene_outline/scene_browser_extension.h>

#include <QObject>

#include <memory>
#include <unordered_map>

namespace sample {

/// Filters by type and visibility, modes, scene statistics above the tree and a summary of the
/// selection below it.
class SampleExtension : public QObject, public ISceneBrowserExtension
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "Kyr.SceneBrowserExtension/1.0")
    Q_INTERFACES(ISceneBrowserExtension)

public:
    SampleExtension();
    ~SampleExtension() override;

    void attach(SceneBrowserData& browser, QQmlEngine& engine) override;
    void detach(SceneBrowserData& browser) override;

private:
    struct Attachments;
    std::unordered_map<SceneBrowserData*, std::unique_ptr<Attachments>> m_attachments;
};

} // namespace sample
