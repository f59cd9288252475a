#include "editor_actions.h"
#include "editor_session.h"

namespace editor {

namespace {

const char* sectionOf(ObjectKind kind)
{
    switch (kind) {
    case ObjectKind::Mesh:
        return "shapes";
    case ObjectKind::Light:
        return "lights";
    case ObjectKind::Camera:
        return "cameras";
    case ObjectKind::Scene:
    case ObjectKind::Group:
        break;
    }
    return "groups";
}

} // namespace

void addBuildActions(ActionTable& table, EditorSession& session)
{
    BuildCommands* build = session.build();
    for (const NewObject& what : newObjects()) {
        table.add(what.identifier, BuildCommands::tr(what.name), "", {"add", sectionOf(what.kind)},
                  {[build, &what] { build->add(what); }, {}, {}, {}});
    }
}

} // namespace editor
