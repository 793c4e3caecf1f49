#include "KdContractThreads.h"

#include <qt_windows.h>

#include <tlhelp32.h>

int kdContractThreads()
{
    const HANDLE all = CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0);
    if (all == INVALID_HANDLE_VALUE) {
        return -1;
    }
    int count = 0;
    THREADENTRY32 entry = {};
    entry.dwSize = sizeof(entry);
    for (BOOL more = Thread32First(all, &entry); more; more = Thread32Next(all, &entry)) {
        count += entry.th32OwnerProcessID == GetCurrentProcessId() ? 1 : 0;
    }
    CloseHandle(all);
    return count;
}
