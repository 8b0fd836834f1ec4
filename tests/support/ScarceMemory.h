#pragma once

#include <cstddef>

namespace ta::test {

/// While one lives, operator new gives no memory for more than `most` bytes at once. One at a time.
class ScarceMemory {
public:
    explicit ScarceMemory(std::size_t most);
    ~ScarceMemory();
    ScarceMemory(const ScarceMemory&) = delete;
    ScarceMemory& operator=(const ScarceMemory&) = delete;
};

}  // namespace ta::test
