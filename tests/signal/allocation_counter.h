#pragma once

#include <cstddef>

/// How often operator new was called in this program so far.
std::size_t allocationCount();
