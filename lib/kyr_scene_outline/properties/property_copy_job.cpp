#include "property_copy_job.h"

#include "property_document.h"

#include <host/core/debug_message.h>

#include <utility>

namespace kyr::properties {
namespace {

constexpr std::size_t pieceBytes = std::size_t(1) << 20;

} // namespace

CopyJob::CopyJob(IAssetSelection::Objects objects, PropertyChoice choice)
    : PropertyJob("SceneBrowserData::copyProperties", objects.size())
    , m_objects(std::move(objects))
    , m_choice(std::move(choice))
{}

bool CopyJob::workOn(std::size_t object)
{
    m_writer.writeChildren(*buildPropertyDocument({m_objects[object]}, m_choice));
    if (m_writer.size() >= pieceBytes)
        m_pieces.push_back(m_writer.take());
    return true;
}

bool CopyJob::wrapUp()
{
    if (!std::exchange(m_isWritten, true)) {
        m_pieces.push_back(m_writer.takeEnd());
        std::size_t size = 0;
        for (const std::string& piece : m_pieces)
            size += piece.size();
        m_hasRoom = m_text.reserve(size);
        return m_hasRoom;
    }
    m_text.append(m_pieces.front());
    m_pieces.pop_front();
    return !m_pieces.empty();
}

bool CopyJob::finish()
{
    const bool ok = m_hasRoom && m_text.put();
    if (!ok) {
        Zar::DebugMessageHelper(0, 5).message(
            "Copy properties: Cannot paste copied data to clipboard");
    }
    return ok;
}

} // namespace kyr::properties
