#include "kyrscene_reader.h"

#include "kyrscene_format.h"
#include <editor/document/object_path.h>
#include <editor/geometry/primitive_shapes.h>

#include <QCoreApplication>
#include <QFile>

#include <pugixml.hpp>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <map>
#include <optional>

#include <unistd.h>

namespace editor {

namespace {

constexpr double readShare = 0.1;
constexpr double parsedShare = 0.3;
constexpr double unpackedShare = 0.6;
constexpr int reportEvery = 1000;
constexpr qint64 pieceBytes = 4 << 20;
constexpr int mostNotes = 50;
constexpr qint64 mostFileBytes = std::numeric_limits<int>::max() - 4096; // as an array of bytes
// At most, as measured. What could be shown and saved here takes less to be read again.
constexpr qint64 bytesPerElement = 72;
constexpr qint64 bytesPerAttribute = 56;
constexpr qint64 bytesPerObject = 400;
constexpr qint64 memoryPart = 2;
// All geometries together.
constexpr qint64 leastUnpacked = 256 << 20;
constexpr qint64 unpackedPerByte = 64;
constexpr quint32 largestId = 0x7fffffff;

QString tr(const char* text)
{
    return QCoreApplication::translate("editor::SceneImport", text);
}

std::optional<ObjectKind> kindFrom(const char* id)
{
    for (const ObjectKind kind :
         {ObjectKind::Group, ObjectKind::Mesh, ObjectKind::Light, ObjectKind::Camera}) {
        if (kindId(kind) == QLatin1String(id))
            return kind;
    }
    return std::nullopt;
}

qint64 memoryOfMachine()
{
    return qint64(sysconf(_SC_PHYS_PAGES)) * sysconf(_SC_PAGESIZE);
}

/// What a text and the objects in it take together.
qint64 memoryToRead(const QByteArray& bytes, int objectCount)
{
    return bytes.size() + bytes.count('<') * bytesPerElement +
           bytes.count('=') * bytesPerAttribute + objectCount * bytesPerObject;
}

/// Of single numbers and tuples of them; anything else has nothing to be infinite.
bool isFinite(const lumo::Variant& value)
{
    const auto areFinite = [](const auto* tuple) {
        const auto numbers = lumo::components(*tuple);
        return std::all_of(numbers.begin(), numbers.end(),
                           [](float n) { return std::isfinite(n); });
    };
    if (const auto* number = value.tryGet<float>())
        return std::isfinite(*number);
    if (const auto* vector = value.tryGet<lumo::Vector3>())
        return areFinite(vector);
    const auto* color = value.tryGet<lumo::Color>();
    return !color || areFinite(color);
}

/// UTF-8 with what is none replaced, and whether anything was.
std::pair<std::string, bool> validText(const char* text)
{
    const QString valid = QString::fromUtf8(text);
    std::string bytes = valid.toStdString();
    const bool isMended = bytes != text;
    return {std::move(bytes), isMended};
}

class Reader
{
public:
    Reader(qint64 fileBytes, int objectCount, const ImportProgress& progress)
        : m_fileBytes(fileBytes), m_objectCount(objectCount), m_progress(progress)
    {}

    /// False with an error, or without one when the progress function stopped it.
    bool read(const pugi::xml_node& document)
    {
        if (!readHeader(document) || !readGeometries(document))
            return false;
        const pugi::xml_node scene = document.child("scene");
        m_root = SceneObject::create(ObjectKind::Scene, "Scene");
        readValues(scene, *m_root);
        m_open.emplace_back(scene, m_root.get());
        // Not by recursion: nothing limits how deep a file nests.
        while (!m_open.empty()) {
            const auto [node, object] = m_open.back();
            m_open.pop_back();
            if (!readChildren(node, *object))
                return false;
        }
        resolveReferences();
        readSelectionSets(document);
        if (m_noteCount > mostNotes)
            m_notes.append(tr("there are %1 more remarks like these").arg(m_noteCount - mostNotes));
        return true;
    }

    const SceneObjectPtr& root() const { return m_root; }
    const QString& error() const { return m_error; }
    const QStringList& notes() const { return m_notes; }

private:
    bool fail(const QString& reason)
    {
        m_error = reason;
        return false;
    }

    bool readHeader(const pugi::xml_node& document)
    {
        if (qstrcmp(document.name(), "kyrscene") != 0 || !document.child("scene"))
            return fail(tr("it is no scene file"));
        if (document.attribute("version").as_int() > kyrscene::version)
            return fail(tr("it was written by a newer version"));
        return true;
    }

    void note(const QString& text)
    {
        if (++m_noteCount <= mostNotes)
            m_notes.append(text);
    }

    bool fitsInMemory(const pugi::xml_node& document)
    {
        const qint64 limit =
            std::min(leastUnpacked + m_fileBytes * unpackedPerByte, memoryOfMachine() / memoryPart);
        qint64 all = 0;
        for (const pugi::xml_node& node : document.children("geometry")) {
            const char* text = node.text().get();
            const auto size =
                kyrscene::unpackedSize(QByteArray::fromRawData(text, int(std::strlen(text))));
            all += size.value_or(0);
        }
        if (all > limit)
            return fail(tr("its geometries unpack to %1 MB, more than the %2 MB for a file of this "
                           "size")
                            .arg(all >> 20)
                            .arg(limit >> 20));
        return true;
    }

    bool readGeometries(const pugi::xml_node& document)
    {
        if (!fitsInMemory(document))
            return false;
        for (const pugi::xml_node& node : document.children("geometry")) {
            if (!m_progress(unpackedShare))
                return false;
            const QString id = QString::fromUtf8(node.attribute("id").value());
            int leftOut = 0;
            auto asset = std::make_shared<MeshAsset>();
            asset->geometry = kyrscene::decodeGeometry(node.text().get(), leftOut);
            if (!asset->geometry)
                return fail(tr("geometry %1 is damaged").arg(id));
            if (leftOut > 0)
                note(tr("geometry %1: %2 triangles without finite places are left out")
                         .arg(id)
                         .arg(leftOut));
            m_assets[std::string("#") + node.attribute("id").value()] = std::move(asset);
        }
        return true;
    }

    bool readChildren(const pugi::xml_node& node, SceneObject& parent)
    {
        for (const pugi::xml_node& child : node.children("object")) {
            if (m_done++ % reportEvery == 0 &&
                !m_progress(unpackedShare + (1 - unpackedShare) * m_done / (m_objectCount + 1)))
                return false;
            const char* kindName = child.attribute("kind").value();
            const std::optional<ObjectKind> kind = kindFrom(kindName);
            if (!kind)
                return fail(tr("\"%1\" is no kind of object").arg(QString::fromUtf8(kindName)));
            const SceneObjectPtr object = SceneObject::create(*kind, "Object");
            readValues(child, *object);
            if (object->mesh() && !readMesh(child.child("mesh"), *object))
                return false;
            const quint32 id = child.attribute("id").as_uint();
            object->setId(id <= largestId ? id : 0);
            parent.append(object);
            if (child.child("object"))
                m_open.emplace_back(child, object.get());
        }
        return true;
    }

    void readValues(const pugi::xml_node& node, SceneObject& object)
    {
        object.setExpanded(node.attribute("expanded").as_bool());
        const kyr::ReflectedObject reflected = object.reflected();
        readProperties(node, reflected);
        for (std::size_t i = 0; i < reflected.propertyCount(); ++i) {
            const kyr::BoundProperty property = reflected.propertyAt(i);
            const kyr::ReflectedObject component(property);
            if (component.isValid())
                readProperties(node.child(property.name().c_str()), component);
        }
    }

    void readProperties(const pugi::xml_node& node, const kyr::ReflectedObject& holder)
    {
        for (const pugi::xml_attribute& attribute : node.attributes()) {
            const kyr::BoundProperty property = holder.property(attribute.name());
            if (!property.isValue() || property.isReadOnly())
                continue;
            const auto [text, isMended] = validText(attribute.value());
            if (isMended)
                note(tr("%1: the text of \"%2\" is no valid UTF-8; what is not is replaced")
                         .arg(called(node), QString::fromLatin1(attribute.name())));
            if (property.propertyType() == typeid(kyr::PersistentObject))
                m_references.emplace_back(property, text);
            else
                setValue(property, text, node);
        }
    }

    void setValue(const kyr::BoundProperty& property, const std::string& text,
                  const pugi::xml_node& node)
    {
        // "inf" and "nan" are the only ways to say it.
        const bool isSuspect = text.find_first_of("nN") != std::string::npos;
        const lumo::Variant before = isSuspect ? property.get() : lumo::Variant();
        if (!property.set(lumo::Variant(text)) || !isSuspect || isFinite(property.get()))
            return;
        property.set(before);
        note(tr("%1: \"%2\" is no finite value of \"%3\" and is left out")
                 .arg(called(node), QString::fromStdString(text),
                      QString::fromStdString(property.name())));
    }

    // By the object around the element.
    static QString called(const pugi::xml_node& node)
    {
        const bool isObject = qstrcmp(node.name(), "object") == 0;
        const pugi::xml_node object = isObject ? node : node.parent();
        return tr("object \"%1\"").arg(QString::fromUtf8(object.attribute("name").value()));
    }

    bool readMesh(const pugi::xml_node& node, SceneObject& object)
    {
        const char* source = node.attribute("source").value();
        const char* geometry = node.attribute("geometry").value();
        if (*geometry) {
            const auto found = m_assets.find(std::string("#") + geometry);
            if (found == m_assets.end())
                return fail(tr("geometry %1 is missing").arg(QString::fromUtf8(geometry)));
            object.mesh()->asset = found->second;
        } else if (*source) {
            MeshAssetPtr& asset = m_assets[source];
            if (!asset)
                asset = makePrimitive(source);
            if (!asset)
                return fail(tr("\"%1\" is no shape").arg(QString::fromUtf8(source)));
            object.mesh()->asset = asset;
        }
        return true;
    }

    void readSelectionSets(const pugi::xml_node& document)
    {
        SelectionSets sets;
        for (const pugi::xml_node& node : document.children("set")) {
            SelectionSet set{node.attribute("name").value(), {}};
            const QByteArray ids(node.attribute("objects").value());
            for (const QByteArray& id : ids.split(' ')) {
                bool isNumber = false;
                const quint32 number = id.toUInt(&isNumber);
                if (isNumber && number <= largestId)
                    set.ids.push_back(number);
            }
            sets.push_back(std::move(set));
        }
        m_root->setSelectionSets(std::move(sets));
    }

    void resolveReferences()
    {
        for (const auto& [property, path] : m_references) {
            if (SceneObject* target = objectAtPath(*m_root, path))
                property.set(lumo::Variant(kyr::PersistentObject(target->reflected())));
        }
    }

    qint64 m_fileBytes;
    int m_objectCount;
    const ImportProgress& m_progress;
    SceneObjectPtr m_root;
    QString m_error;
    QStringList m_notes;
    int m_noteCount = 0;
    int m_done = 0;
    // By shape, or by identifier with "#" before it.
    std::map<std::string, MeshAssetPtr> m_assets;
    std::vector<std::pair<pugi::xml_node, SceneObject*>> m_open;
    std::vector<std::pair<kyr::BoundProperty, std::string>> m_references;
};

/// All of the file; nothing when the progress function stopped it.
QByteArray readPieces(QFile& file, const ImportProgress& progress)
{
    QByteArray bytes;
    bytes.reserve(int(file.size()));
    while (!file.atEnd()) {
        const QByteArray piece = file.read(pieceBytes);
        if (piece.isEmpty() ||
            !progress(readShare * double(bytes.size()) / double(std::max<qint64>(file.size(), 1))))
            break;
        bytes += piece;
    }
    return file.atEnd() ? bytes : QByteArray();
}

} // namespace

SceneImport readKyrscene(const QString& path, const ImportProgress& progress)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {nullptr, file.errorString()};
    const qint64 memory = memoryOfMachine() / memoryPart;
    const qint64 largest = std::min(mostFileBytes, memory);
    if (file.size() > largest) {
        return {nullptr, tr("it has %1 MB, and this machine can take %2 MB")
                             .arg(file.size() >> 20)
                             .arg(largest >> 20)};
    }
    QByteArray bytes = readPieces(file, progress);
    if (bytes.isEmpty())
        return {nullptr, file.error() == QFile::NoError ? QString() : file.errorString()};
    const int objectCount = bytes.count("<object");
    if (const qint64 needed = memoryToRead(bytes, objectCount); needed > memory) {
        return {nullptr, tr("reading it takes %1 MB of memory, and this machine can give %2 MB")
                             .arg(needed >> 20)
                             .arg(memory >> 20)};
    }
    pugi::xml_document document;
    const pugi::xml_parse_result parsed =
        document.load_buffer_inplace(bytes.data(), std::size_t(bytes.size()));
    if (!parsed) {
        const int line = bytes.left(int(parsed.offset)).count('\n') + 1;
        return {nullptr,
                tr("line %1: %2").arg(line).arg(QString::fromLatin1(parsed.description()))};
    }
    if (!progress(parsedShare))
        return {};
    Reader reader(bytes.size(), objectCount, progress);
    if (!reader.read(document.document_element()))
        return {nullptr, reader.error()};
    return {reader.root(), {}, reader.notes()};
}

} // namespace editor
