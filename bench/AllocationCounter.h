#pragma once

#include <cstddef>

// Counts the heap allocations made through operator new in this process.
namespace AllocationCounter {
std::size_t count();
} // namespace AllocationCounter
