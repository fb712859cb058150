#pragma once
#include <csignal>
#include <sys/resource.h>

namespace test {

/// While one lives, no file of this process grows beyond so many bytes, as on a disk that is full: the system
/// takes the first bytes of what is written and refuses the others.
class FullDisk {
  public:
    explicit FullDisk(rlim_t bytes) : m_former(std::signal(SIGXFSZ, SIG_IGN)) {
        getrlimit(RLIMIT_FSIZE, &m_limit);
        const rlimit full{bytes, m_limit.rlim_max};
        setrlimit(RLIMIT_FSIZE, &full);
    }

    ~FullDisk() {
        setrlimit(RLIMIT_FSIZE, &m_limit);
        std::signal(SIGXFSZ, m_former);
    }

    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;

  private:
    rlimit m_limit{};
    void (*m_former)(int);
};

} // namespace test
