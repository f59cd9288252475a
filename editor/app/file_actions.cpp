#include "editor_actions.h"
#include "editor_session.h"

namespace editor {

void addFileActions(ActionTable& table, EditorSession& session)
{
    FileCommands* files = session.files();
    WindowCommands* window = session.window();
    const SceneDocument* document = session.document();
    const auto isEmpty = [document] {
        return document->filePath().isEmpty() && document->objectCount() == 0;
    };
    table.add("new", FileCommands::tr("&New"), "Ctrl+N", {"file", "open"},
              {[files] { files->newScene(); }, {}, {}, {}});
    table.add("open", FileCommands::tr("&Open…"), "Ctrl+O", {"file", "open"},
              {[files] { files->open(); }, {}, {}, {}});
    table.add("save", FileCommands::tr("&Save"), "Ctrl+S", {"file", "save"},
              {[files] { files->save(); }, {}, {}, {}});
    table.add("save_as", FileCommands::tr("Save &As…"), "Ctrl+Shift+S", {"file", "save"},
              {[files] { files->saveAs(); }, {}, {}, {}});
    table.add("revert", FileCommands::tr("&Revert"), "", {"file", "save"},
              {[window] { Q_EMIT window->revertRequested(); },
               [document] { return document->isModified() && !document->filePath().isEmpty(); },
               {},
               {}});
    SceneExport* exporter = session.exporter();
    table.add("export", FileCommands::tr("&Export…"), "Ctrl+Shift+E", {"file", "save"},
              {[exporter] { exporter->begin(); }, {}, {}, {}});
    table.add("close", FileCommands::tr("&Close"), "Ctrl+W", {"file", "quit"},
              {[files] { files->newScene(); }, [isEmpty] { return !isEmpty(); }, {}, {}});
    table.add("quit", FileCommands::tr("&Quit"), "Ctrl+Q", {"file", "quit"},
              {[files] { files->quit(); }, {}, {}, {}});
}

} // namespace editor
