#pragma once

namespace editor {

class SceneDocument;

/// Gives references to scene objects a text form: the path of the object in its scene, an empty
/// text for no object. A path is looked up in the document that was added last. GUI thread only.
void registerObjectReferences();

void addReferenceScene(SceneDocument& document);
void removeReferenceScene(SceneDocument& document);

} // namespace editor
