#ifndef FULLDISK_H
#define FULLDISK_H

#include <csignal>
#include <sys/resource.h>

/** While it lives, files of this process take so many bytes and no more, as on a disk that becomes full. */
class FullDisk
{
public:
    explicit FullDisk(rlim_t bytes)
        : m_handler(std::signal(SIGXFSZ, SIG_IGN))
    {
        getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit limit{bytes, m_before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }

    ~FullDisk()
    {
        setrlimit(RLIMIT_FSIZE, &m_before);
        std::signal(SIGXFSZ, m_handler);
    }

private:
    void (*m_handler)(int);
    rlimit m_before;
};

#endif
