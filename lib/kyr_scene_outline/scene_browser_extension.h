#pragma once

#include <QtPlugin>

class QQmlEngine;
class SceneBrowserData;

/// What an editor loads from a plug-in to extend its Scene Browsers: filters, a mode list, header
/// and footer panels, columns.
class ISceneBrowserExtension
{
public:
    virtual ~ISceneBrowserExtension() = default;

    /// Called once for each browser. What the extension attaches it owns itself.
    virtual void attach(SceneBrowserData& browser, QQmlEngine& engine) = 0;
    /// Takes everything off that `attach` put there; called before the browser or the plug-in goes.
    virtual void detach(SceneBrowserData& browser) = 0;
};

Q_DECLARE_INTERFACE(ISceneBrowserExtension, "Kyr.SceneBrowserExtension/1.0")
