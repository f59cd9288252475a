#pragma once

#include <host/clipboard/clipboard_backend.h>
#include <host/clipboard/global_block.h>
#include <host/core/debug_message.h>

#include <cstring>
#include <string>

namespace kyr::testkit {

/// A clipboard of text that is nobody else's.
class MemoryClipboard : public Zar::platform::IClipboardBackend
{
public:
    using Block = Zar::platform::GlobalBlock;

    bool open() override { return true; }
    void close() override {}
    bool isFormatAvailable(unsigned format) const override
    {
        return format == 1 && !m_text.empty();
    }
    Block* data(unsigned format) override
    {
        m_handedOut = isFormatAvailable(format) ? allocate(m_text.size() + 1) : nullptr;
        if (m_handedOut)
            std::memcpy(m_handedOut->data(), m_text.c_str(), m_text.size() + 1);
        return m_handedOut.get();
    }
    bool empty() override
    {
        m_text.clear();
        return true;
    }
    bool setData(unsigned, std::unique_ptr<Block> block) override
    {
        m_text = block->data();
        return true;
    }
    std::unique_ptr<Block> allocate(std::size_t size) override { return Block::allocate(size); }

private:
    std::string m_text;
    std::unique_ptr<Block> m_handedOut;
};

/// Takes the place of the system's clipboard, and keeps quiet what is told of each paste.
class ClipboardInMemory
{
public:
    ClipboardInMemory()
        : m_previous(Zar::platform::setClipboardBackend(std::make_shared<MemoryClipboard>()))
        , m_quiet([](const Zar::DebugMessage&) {})
    {}
    ~ClipboardInMemory() { Zar::platform::setClipboardBackend(std::move(m_previous)); }
    ClipboardInMemory(const ClipboardInMemory&) = delete;
    ClipboardInMemory& operator=(const ClipboardInMemory&) = delete;

private:
    std::shared_ptr<Zar::platform::IClipboardBackend> m_previous;
    Zar::DebugMessageSinkGuard m_quiet;
};

} // namespace kyr::testkit
