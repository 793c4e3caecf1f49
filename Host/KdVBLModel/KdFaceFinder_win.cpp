#include <KdVBLModel/KdFaceFinder.h>

#include <QFileInfo>

#include <vector>

#include <qt_windows.h>

namespace {

constexpr int kLongestPath = 32768;

/** The folder of the library that this code is in; empty when Windows does not tell. */
QString libraryFolder()
{
    constexpr DWORD flags =
        GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT;
    HMODULE library = nullptr;
    if (!GetModuleHandleExW(flags, reinterpret_cast<LPCWSTR>(&libraryFolder), &library)) {
        return {};
    }
    std::vector<wchar_t> path(kLongestPath);
    const DWORD length = GetModuleFileNameW(library, path.data(), kLongestPath);
    return QFileInfo(QString::fromWCharArray(path.data(), static_cast<int>(length))).path();
}

} // namespace

/** Beside the library: there is no folder that OpenCV is installed to. */
QStringList KdFaceFinder::modelFolders()
{
    const QString folder = libraryFolder();
    return folder.isEmpty() ? QStringList() : QStringList{folder};
}
