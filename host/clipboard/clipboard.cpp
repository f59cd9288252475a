#include "clipboard.h"

#include "clipboard_backend.h"
#include "qt_clipboard_backend.h"

#include <cstring>
#include <utility>

namespace Zar::platform {
namespace {

std::shared_ptr<IClipboardBackend>& currentBackend()
{
    static std::shared_ptr<IClipboardBackend> backend = std::make_shared<QtClipboardBackend>();
    return backend;
}

bool isOpen = false;

} // namespace

std::shared_ptr<IClipboardBackend> setClipboardBackend(std::shared_ptr<IClipboardBackend> backend)
{
    if (!backend)
        backend = std::make_shared<QtClipboardBackend>();
    return std::exchange(currentBackend(), std::move(backend));
}

std::shared_ptr<const GlobalBlock> IClipboardBackend::share(unsigned format)
{
    const GlobalBlock* block = data(format);
    std::unique_ptr<GlobalBlock> copy = block ? GlobalBlock::allocate(block->size()) : nullptr;
    if (copy)
        std::memcpy(copy->data(), block->data(), block->size());
    return copy;
}

bool OpenClipboard(WindowHandle)
{
    if (isOpen)
        return false;
    isOpen = currentBackend()->open();
    return isOpen;
}

void CloseClipboard()
{
    if (std::exchange(isOpen, false))
        currentBackend()->close();
}

bool EmptyClipboard()
{
    return isOpen && currentBackend()->empty();
}

bool IsClipboardFormatAvailable(unsigned format)
{
    return isOpen && currentBackend()->isFormatAvailable(format);
}

GlobalHandle GetClipboardData(unsigned format)
{
    return isOpen ? currentBackend()->data(format) : nullptr;
}

std::shared_ptr<const GlobalBlock> shareClipboardData(unsigned format)
{
    return isOpen ? currentBackend()->share(format) : nullptr;
}

bool SetClipboardData(unsigned format, GlobalHandle block)
{
    std::unique_ptr<GlobalBlock> owned(block);
    return isOpen && owned && currentBackend()->setData(format, std::move(owned));
}

std::string clipboardProblem()
{
    return currentBackend()->problem();
}

GlobalHandle GlobalAlloc(unsigned, std::size_t size)
{
    return currentBackend()->allocate(size).release();
}

void* GlobalLock(GlobalHandle block)
{
    return block ? block->data() : nullptr;
}

void GlobalUnlock(GlobalHandle) {}

void GlobalFree(GlobalHandle block)
{
    delete block;
}

} // namespace Zar::platform
