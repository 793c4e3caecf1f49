#include "FileFaults.h"

#include <QtGlobal>

#include <csignal>
#include <unistd.h>

namespace FileFaults {

constexpr uid_t kNobody = 65534;

WithoutPrivileges::WithoutPrivileges() : m_user(geteuid())
{
    if (m_user == 0 && seteuid(kNobody) != 0) {
        qFatal("The rights of root cannot be laid down");
    }
}

WithoutPrivileges::~WithoutPrivileges()
{
    if (geteuid() != m_user && seteuid(m_user) != 0) {
        qFatal("The rights of root cannot be taken up again");
    }
}

FileSizeLimit::FileSizeLimit(rlim_t bytes) : m_handler(std::signal(SIGXFSZ, SIG_IGN))
{
    getrlimit(RLIMIT_FSIZE, &m_before);
    const rlimit limit{bytes, m_before.rlim_max};
    if (setrlimit(RLIMIT_FSIZE, &limit) != 0) {
        qFatal("The size of files cannot be limited");
    }
}

FileSizeLimit::~FileSizeLimit()
{
    setrlimit(RLIMIT_FSIZE, &m_before);
    std::signal(SIGXFSZ, m_handler);
}

} // namespace FileFaults
