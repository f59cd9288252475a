#pragma once

#include <cstddef>
#include <memory>
#include <string>

namespace Zar::platform {

/// Movable memory in which data travels to and from the clipboard.
class GlobalBlock;

/// A clipboard behind the functions of clipboard.h. Every function is called on the GUI thread;
/// those from `isFormatAvailable` to `setData` only between a successful `open` and its `close`.
/// Reading may wait for the program that holds the clipboard. Nothing may throw.
class IClipboardBackend
{
public:
    virtual ~IClipboardBackend() = default;

    /// False while somebody else holds the clipboard.
    virtual bool open() = 0;
    virtual void close() = 0;

    virtual bool isFormatAvailable(unsigned format) const = 0;
    /// Null when the format is not there. Owned by the backend until the clipboard is closed.
    virtual GlobalBlock* data(unsigned format) = 0;
    /// The same bytes for longer than the clipboard is open; they do not change when it does. A
    /// copy unless the backend can share what it has.
    virtual std::shared_ptr<const GlobalBlock> share(unsigned format);
    /// Drops what is on the clipboard; false leaves it there.
    virtual bool empty() = 0;
    virtual bool setData(unsigned format, std::unique_ptr<GlobalBlock> block) = 0;

    /// Why the last reading came to nothing, in a sentence for the user; empty when there simply
    /// was no text.
    virtual std::string problem() const { return {}; }

    /// Null when there is not enough memory.
    virtual std::unique_ptr<GlobalBlock> allocate(std::size_t size) = 0;
};

/// Puts `backend` in place of the present one, which is returned. Null stands for the system
/// clipboard. Not while the clipboard is open.
std::shared_ptr<IClipboardBackend> setClipboardBackend(std::shared_ptr<IClipboardBackend> backend);

} // namespace Zar::platform
