#pragma once

#include <sys/resource.h>
#include <sys/types.h>

/** Faults of the file system that a test can bring about on any machine, each for the life of an
 * object. */
namespace FileFaults {

/** Nobody's rights, also where the tests run as root: what is forbidden is then really forbidden.
 */
class WithoutPrivileges
{
public:
    WithoutPrivileges();
    ~WithoutPrivileges();
    WithoutPrivileges(const WithoutPrivileges&) = delete;
    WithoutPrivileges& operator=(const WithoutPrivileges&) = delete;

private:
    uid_t m_user;
};

/** No file grows beyond this size: writing fails half-way, as it does on a full disk. */
class FileSizeLimit
{
public:
    explicit FileSizeLimit(rlim_t bytes);
    ~FileSizeLimit();
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;

private:
    rlimit m_before{};
    void (*m_handler)(int);
};

} // namespace FileFaults
