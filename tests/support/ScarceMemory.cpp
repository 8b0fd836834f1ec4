#include "tests/support/ScarceMemory.h"

#include <cstdlib>
#include <limits>
#include <new>

namespace {

constexpr std::size_t kAny = std::numeric_limits<std::size_t>::max();
std::size_t g_most = kAny;

}  // namespace

// These take the place of the library's own in the whole program.
void* operator new(std::size_t size) {
    void* const memory = size > g_most ? nullptr : std::malloc(size == 0 ? 1 : size);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    return memory;
}

void operator delete(void* memory) noexcept {
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}

namespace ta::test {

ScarceMemory::ScarceMemory(std::size_t most) {
    g_most = most;
}

ScarceMemory::~ScarceMemory() {
    g_most = kAny;
}

}  // namespace ta::test
