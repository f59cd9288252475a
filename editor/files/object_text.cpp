#include "object_text.h"

#include "kyrscene_reader.h"
#include "scene_writer.h"

#include <editor/document/transform_math.h>

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>

#include <unordered_map>

namespace editor {

namespace {

constexpr int headBytes = 4096;

QString tr(const char* text)
{
    return QCoreApplication::translate("editor::ObjectText", text);
}

/// The file that the format's own writer and reader work on, with all their checks.
class ScratchFile
{
public:
    QString path() const { return m_folder.filePath(QStringLiteral("objects.kyrscene")); }

    bool write(const QByteArray& bytes)
    {
        QFile file(path());
        return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.flush();
    }
    QByteArray read() const
    {
        QFile file(path());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

private:
    QTemporaryDir m_folder;
};

SceneObjectPtr carrierFor(const SceneObject& parent)
{
    const SceneObjectPtr carrier = SceneObject::create(ObjectKind::Group, carrierName);
    setFromMatrix(*carrier->transform(), worldTransform(parent));
    return carrier;
}

/// Why the objects are too many or too deep; drops identifiers on the way.
QString refusalOf(SceneObject& root)
{
    std::vector<std::pair<SceneObject*, int>> waiting{{&root, 0}};
    int count = -1;
    while (!waiting.empty()) {
        const auto [object, depth] = waiting.back();
        waiting.pop_back();
        object->setId(0);
        if (++count > mostTextObjects)
            return tr("it holds more than %1 objects").arg(mostTextObjects);
        if (depth > deepestTextObject)
            return tr("its objects are more than %1 levels deep").arg(deepestTextObject);
        for (const SceneObjectPtr& child : object->children())
            waiting.emplace_back(child.get(), depth + 1);
    }
    return {};
}

/// A few words on a text that cannot be read as a scene.
QString wrongTextReason(const QByteArray& text)
{
    if (text.size() > largestObjectText)
        return tr("the text is larger than %1 MB").arg(largestObjectText >> 20);
    const QByteArray head = text.left(headBytes);
    if (head.contains("<kyrscene"))
        return {};
    return head.contains("<objects") || head.contains("<rObj")
               ? tr("the clipboard holds properties; Paste Properties takes them")
               : tr("the clipboard holds no objects");
}

std::vector<CopiedObjects> familiesOf(SceneObject& root)
{
    std::vector<CopiedObjects> families;
    CopiedObjects own;
    for (const SceneObjectPtr& child : root.takeChildren()) {
        if (child->kind() == ObjectKind::Group && child->name() == carrierName)
            families.push_back({matrixOf(*child->transform()), child->takeChildren()});
        else
            own.objects.push_back(child);
    }
    if (!own.objects.empty())
        families.push_back(std::move(own));
    return families;
}

} // namespace

SceneSnapshot snapshotOf(const SceneObjects& objects)
{
    const SceneObjectPtr root = SceneObject::create(ObjectKind::Scene, "Clipboard");
    std::unordered_map<const SceneObject*, SceneObject*> carriers;
    std::vector<SceneSnapshot::Branch> branches;
    branches.reserve(objects.size());
    for (const SceneObjectPtr& object : objects) {
        SceneObject*& carrier = carriers[object->parent()];
        if (!carrier) {
            root->append(carrierFor(*object->parent()));
            carrier = root->children().back().get();
        }
        branches.push_back({object.get(), carrier});
    }
    return SceneSnapshot(root, std::move(branches));
}

ObjectText textOfScene(SceneObjectPtr scene, const WriteProgress& progress)
{
    if (const QString refusal = refusalOf(*scene); !refusal.isEmpty())
        return {{}, refusal};
    const ScratchFile file;
    if (const QString error = writeScene(*scene, file.path(), progress); !error.isEmpty())
        return {{}, error};
    // Takes as long as copying it did.
    scene.reset();
    QByteArray text = file.read();
    // Nobody shall cut what cannot be pasted.
    if (text.isEmpty())
        return {{}, tr("what was copied cannot be read back")};
    if (const QString reason = wrongTextReason(text); !reason.isEmpty())
        return {{}, reason};
    return {std::move(text), {}};
}

ObjectsOfText objectsOfText(const QByteArray& text, const ImportProgress& progress)
{
    if (const QString reason = wrongTextReason(text); !reason.isEmpty())
        return {{}, reason};
    ScratchFile file;
    if (!file.write(text))
        return {{}, tr("there is no room for a temporary file")};
    const SceneImport import = readKyrscene(file.path(), progress);
    if (!import.root)
        return {{}, import.error};
    if (const QString refusal = refusalOf(*import.root); !refusal.isEmpty())
        return {{}, refusal};
    ObjectsOfText result{familiesOf(*import.root), {}};
    if (result.copied.empty())
        result.error = tr("the clipboard holds an empty scene");
    return result;
}

} // namespace editor
