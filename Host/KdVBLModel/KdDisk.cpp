#include "KdDisk.h"

namespace KdDisk {

Handle& Handle::operator=(Handle&& other) noexcept
{
    if (this != &other) {
        close();
        m_value = std::exchange(other.m_value, kNone);
    }
    return *this;
}

} // namespace KdDisk
