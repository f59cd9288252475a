#include "gltf_writer.h"

#include "gltf_json.h"
#include "gltf_plan.h"

#include <QCoreApplication>
#include <QtEndian>

#include <limits>

namespace editor {

namespace {

constexpr double jsonShare = 0.5;
// A multiple of what Base64 takes at once.
constexpr int pieceBytes = 3 * 64 * 1024;

// The layout of glTF 2.0, chapter "Binary glTF Layout".
constexpr quint32 magic = 0x46546C67;
constexpr quint32 version = 2;
constexpr quint32 jsonChunk = 0x4E4F534A;
constexpr quint32 binaryChunk = 0x004E4942;
constexpr std::uint64_t headerSize = 12;
constexpr std::uint64_t chunkHeaderSize = 8;

std::uint64_t padded(std::uint64_t size)
{
    return (size + 3) / 4 * 4;
}

/// Gathers the bytes of the buffer and hands them on in pieces.
class BufferOutput
{
public:
    BufferOutput(SceneOutput& output, bool asText) : m_output(output), m_asText(asText)
    {
        m_piece.reserve(pieceBytes);
    }

    void write(const QVector3D& vector)
    {
        for (int axis = 0; axis < 3; ++axis)
            writeWord(qToLittleEndian(vector[axis]));
    }
    void write(quint32 index) { writeWord(qToLittleEndian(index)); }
    void flush()
    {
        const QByteArray bytes = m_asText ? m_piece.toBase64() : m_piece;
        m_output.write(bytes.constData(), std::size_t(bytes.size()));
        m_piece.resize(0);
    }

private:
    template <typename Word>
    void writeWord(Word word)
    {
        static_assert(sizeof word == 4);
        m_piece.append(reinterpret_cast<const char*>(&word), sizeof word);
        if (m_piece.size() >= pieceBytes)
            flush();
    }

    SceneOutput& m_output;
    bool m_asText;
    QByteArray m_piece;
};

void writeBuffer(const GltfPlan& plan, bool asText, SceneOutput& output)
{
    BufferOutput buffer(output, asText);
    for (const GltfPlan::Geometry& geometry : plan.geometries) {
        for (const MeshGeometry::Vertex& vertex : geometry.geometry->vertices()) {
            buffer.write(vertex.position);
            buffer.write(vertex.normal);
        }
        for (const quint32 index : geometry.geometry->indices())
            buffer.write(index);
    }
    buffer.flush();
}

void writeWords(SceneOutput& output, std::initializer_list<quint32> words)
{
    for (const quint32 word : words) {
        const quint32 little = qToLittleEndian(word);
        output.write(&little, sizeof little);
    }
}

void writeContainer(const GltfPlan& plan, std::string json, SceneOutput& output)
{
    json.resize(padded(json.size()), ' ');
    // Of whole words, and so without padding.
    const std::uint64_t binary = plan.bufferBytes;
    const std::uint64_t size =
        headerSize + chunkHeaderSize + json.size() + (binary > 0 ? chunkHeaderSize + binary : 0);
    if (size > std::numeric_limits<quint32>::max())
        throw WriteFailure{QCoreApplication::translate(
            "editor::SceneWriter", "it takes more than 4 GB, which this format cannot hold")};
    writeWords(output, {magic, version, quint32(size), quint32(json.size()), jsonChunk});
    output.write(json.data(), json.size());
    if (binary > 0) {
        writeWords(output, {quint32(binary), binaryChunk});
        writeBuffer(plan, false, output);
    }
}

void writeText(const GltfPlan& plan, const GltfJson& json, SceneOutput& output)
{
    output.write(json.text.data(), json.dataPosition);
    if (json.dataPosition > 0)
        writeBuffer(plan, true, output);
    output.write(json.text.data() + json.dataPosition, json.text.size() - json.dataPosition);
}

} // namespace

void writeGltf(const SceneObject& root, bool binary, SceneOutput& output)
{
    const GltfPlan plan = planGltf(root);
    GltfJson json = makeGltfJson(plan, root.name(), !binary,
                                 [&output](double share) { output.report(jsonShare * share); });
    const double bufferText = double(plan.bufferBytes) * (binary ? 1 : 4.0 / 3);
    output.expect(double(json.text.size()) + bufferText, jsonShare);
    if (binary)
        writeContainer(plan, std::move(json.text), output);
    else
        writeText(plan, json, output);
}

} // namespace editor
