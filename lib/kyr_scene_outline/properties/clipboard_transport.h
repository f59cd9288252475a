#pragma once

#include <host/data_section/binary_block.h>

namespace kyr::properties {

/// Puts a serialised document on the clipboard as plain text with a terminating NUL byte.
bool putDocumentOnClipboard(const Zar::SmartPointer<Zar::BinaryBlock>& document);

/// The clipboard's plain text up to its first NUL byte, for a document to be rebuilt from; null
/// when there is none.
Zar::SmartPointer<Zar::BinaryBlock> takeDocumentFromClipboard();

} // namespace kyr::properties
