#pragma once

#include <host/data_section/data_section.h>

namespace kyr::properties {

/// Puts the serialised document on the clipboard as plain text with a terminating NUL byte.
bool putDocumentOnClipboard(const Zar::DataSectionPtr& document);

/// The document rebuilt from the clipboard's plain text up to its first NUL byte; null when there
/// is no text or it is no such document.
Zar::DataSectionPtr takeDocumentFromClipboard();

} // namespace kyr::properties
