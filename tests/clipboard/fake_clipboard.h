#pragma once

#include <host/clipboard/clipboard_backend.h>
#include <host/clipboard/global_block.h>

#include <cstring>
#include <memory>
#include <optional>
#include <string>
#include <utility>

namespace test {

/// A clipboard in memory that logs what is done to it and fails at one step on request. It stands
/// in for the system clipboard for as long as its `Guard` lives.
class FakeClipboard : public Zar::platform::IClipboardBackend
{
public:
    class Guard
    {
    public:
        explicit Guard(std::shared_ptr<FakeClipboard> fake)
            : m_previous(Zar::platform::setClipboardBackend(std::move(fake)))
        {}
        ~Guard() { Zar::platform::setClipboardBackend(std::move(m_previous)); }
        Guard(const Guard&) = delete;
        Guard& operator=(const Guard&) = delete;

    private:
        std::shared_ptr<Zar::platform::IClipboardBackend> m_previous;
    };

    /// "open", "allocate", "empty", "set" or "get"; the step of that name fails.
    std::string failing;
    /// The plain text with its NUL byte; nothing when there is none on the clipboard.
    std::optional<std::string> text;

    std::string takeLog() { return std::exchange(m_log, {}); }

    bool open() override { return step("open"); }
    void close() override { step("close"); }
    bool isFormatAvailable(unsigned wanted) const override { return text && wanted == 1; }
    Zar::platform::GlobalBlock* data(unsigned wanted) override
    {
        if (!step("get") || !isFormatAvailable(wanted))
            return nullptr;
        m_handedOut = Zar::platform::GlobalBlock::allocate(text->size() + 1);
        std::memcpy(m_handedOut->data(), text->c_str(), text->size() + 1);
        return m_handedOut.get();
    }
    bool empty() override
    {
        const bool ok = step("empty");
        if (ok)
            text.reset();
        return ok;
    }
    bool setData(unsigned given, std::unique_ptr<Zar::platform::GlobalBlock> block) override
    {
        const bool ok = step("set") && given == 1;
        if (ok)
            text = std::string(block->data(), block->size());
        return ok;
    }
    std::unique_ptr<Zar::platform::GlobalBlock> allocate(std::size_t size) override
    {
        return step("allocate") ? Zar::platform::GlobalBlock::allocate(size) : nullptr;
    }

private:
    bool step(const std::string& name)
    {
        m_log += m_log.empty() ? name : " " + name;
        return name != failing;
    }

    std::string m_log;
    std::unique_ptr<Zar::platform::GlobalBlock> m_handedOut;
};

} // namespace test
