#pragma once

#include <editor/document/scene_building.h>
#include <editor/document/scene_snapshot.h>
#include <editor/files/scene_import.h>
#include <editor/files/scene_output.h>

#include <QByteArray>
#include <QString>

namespace editor {

// Whole objects as a text that travels over the clipboard: a scene in the bundled format, in which
// a group named like `carrierName` stands for each parent that objects were copied from, at its
// place in the world. The text of a scene file will do as well; its top objects are what it holds.

inline constexpr const char* carrierName = "Copied objects";
inline constexpr int largestObjectText = 64 << 20;
inline constexpr int mostTextObjects = 200000;
inline constexpr int deepestTextObject = 1000;

struct ObjectText
{
    QByteArray text;
    /// The bare reason why there is none; empty when there is one.
    QString error;
};
/// Copies objects, of which none is below another one, with all below them.
SceneSnapshot snapshotOf(const SceneObjects& objects);
/// Of the copy that such a snapshot made, which goes. Re-entrant.
ObjectText textOfScene(SceneObjectPtr scene, const WriteProgress& progress = {});

struct ObjectsOfText
{
    std::vector<CopiedObjects> copied;
    /// The bare reason why there are none; empty when there are some.
    QString error;
};
/// Takes any text. What it refuses is above one of the limits or no scene. The objects are free,
/// without identifiers and selection sets. Re-entrant.
ObjectsOfText objectsOfText(const QByteArray& text, const ImportProgress& progress);

} // namespace editor
