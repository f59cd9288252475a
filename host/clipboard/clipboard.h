#pragma once

#include <host/clipboard/global_block.h>

#include <cstddef>
#include <memory>
#include <string>

/// The clipboard of the platform, in the operations that its users know by these names.
/// GUI thread only.
namespace Zar::platform {

/// Handle of a window; only null is of use here.
using WindowHandle = void*;
/// Handle of a block of memory.
using GlobalHandle = GlobalBlock*;

/// Plain text that ends at its first NUL byte.
inline constexpr unsigned textFormat = 1;
inline constexpr unsigned movableMemory = 2;

/// False when the clipboard is held by another program or is already open.
bool OpenClipboard(WindowHandle owner);
void CloseClipboard();
bool EmptyClipboard();
bool IsClipboardFormatAvailable(unsigned format);
/// Null when the format is not there. The clipboard owns the block, which ends with a NUL byte and
/// is valid until the clipboard is closed.
GlobalHandle GetClipboardData(unsigned format);
/// The same bytes for as long as they are needed, without a copy where the clipboard's backend can
/// do without one; null as above.
std::shared_ptr<const GlobalBlock> shareClipboardData(unsigned format);
/// Takes the block over, also when it is false: the block could not be put on the clipboard.
bool SetClipboardData(unsigned format, GlobalHandle block);

/// Why the last reading came to nothing, in a sentence for the user, such as an owner that does not
/// answer; empty when there simply was no text.
std::string clipboardProblem();

/// Zeroed memory; null when there is not enough.
GlobalHandle GlobalAlloc(unsigned flags, std::size_t size);
void* GlobalLock(GlobalHandle block);
void GlobalUnlock(GlobalHandle block);
void GlobalFree(GlobalHandle block);

} // namespace Zar::platform
