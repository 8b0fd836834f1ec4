#pragma once

#include <csignal>

#include <sys/resource.h>

namespace ta::test {

/// While one lives, no file can become longer than these bytes, as on a full disk.
class SmallFilesOnly {
public:
    explicit SmallFilesOnly(rlim_t bytes) : m_handler(std::signal(SIGXFSZ, SIG_IGN)) {
        getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit limit{bytes, m_before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~SmallFilesOnly() {
        setrlimit(RLIMIT_FSIZE, &m_before);
        std::signal(SIGXFSZ, m_handler);
    }
    SmallFilesOnly(const SmallFilesOnly&) = delete;
    SmallFilesOnly& operator=(const SmallFilesOnly&) = delete;

private:
    rlimit m_before{};
    void (*m_handler)(int);
};

}  // namespace ta::test
