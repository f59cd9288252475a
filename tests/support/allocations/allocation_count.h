#pragma once

#include <cstddef>

namespace test {

/// How often the program has called `operator new`, in all threads. Programs that link
/// `kyr_allocation_count` have their own `operator new` that counts.
std::size_t allocationCount() noexcept;

} // namespace test
