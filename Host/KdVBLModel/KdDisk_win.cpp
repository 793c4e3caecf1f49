#include "KdDisk.h"

#include <QDir>
#include <QFileInfo>

#include <qt_windows.h>

namespace {

// NTFS counts UTF-16 units.
constexpr int kMaxNameUnits = 255;
constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

HANDLE handleOf(const KdDisk::Handle& handle)
{
    return reinterpret_cast<HANDLE>(handle.value());
}

std::wstring nativePath(const QString& path)
{
    // The prefix lifts the limit of 260 characters.
    return (QStringLiteral("\\\\?\\") + QDir::toNativeSeparators(QDir::cleanPath(path)))
        .toStdWString();
}

void fill(QString* error, const QString& text)
{
    if (error) {
        *error = text;
    }
}

QString systemText(DWORD code)
{
    return qt_error_string(static_cast<int>(code)).trimmed();
}

QString folderError(const QString& folder, DWORD code)
{
    if (QFileInfo(folder).isFile()) {
        return QStringLiteral("%1 is not a folder.").arg(folder);
    }
    return code == ERROR_ACCESS_DENIED || code == ERROR_WRITE_PROTECT
               ? QStringLiteral("The folder %1 is not writable.").arg(folder)
               : QStringLiteral("The folder %1 does not exist.").arg(folder);
}

QString creationError(const QString& path, DWORD code)
{
    const QString folder = QFileInfo(path).path();
    switch (code) {
    case ERROR_FILE_EXISTS:
    case ERROR_ALREADY_EXISTS:
        return QStringLiteral("The file %1 exists already.").arg(path);
    case ERROR_PATH_NOT_FOUND:
    case ERROR_DIRECTORY:
    case ERROR_WRITE_PROTECT:
        return folderError(folder, code);
    case ERROR_ACCESS_DENIED:
        return QFileInfo::exists(path) ? QStringLiteral("The file %1 exists already.").arg(path)
                                       : folderError(folder, code);
    case ERROR_DISK_FULL:
    case ERROR_HANDLE_DISK_FULL:
        return QStringLiteral("There is no space left in the folder %1.").arg(folder);
    case ERROR_FILENAME_EXCED_RANGE:
        return QStringLiteral("The file name %1 is too long.").arg(path);
    default:
        return QStringLiteral("The file %1 cannot be made: %2.").arg(path, systemText(code));
    }
}

KdDisk::Handle opened(HANDLE handle)
{
    return handle == INVALID_HANDLE_VALUE ? KdDisk::Handle()
                                          : KdDisk::Handle(reinterpret_cast<qintptr>(handle));
}

bool isSame(HANDLE left, HANDLE right)
{
    BY_HANDLE_FILE_INFORMATION a = {};
    BY_HANDLE_FILE_INFORMATION b = {};
    return GetFileInformationByHandle(left, &a) && GetFileInformationByHandle(right, &b) &&
           a.dwVolumeSerialNumber == b.dwVolumeSerialNumber &&
           a.nFileIndexHigh == b.nFileIndexHigh && a.nFileIndexLow == b.nFileIndexLow;
}

} // namespace

namespace KdDisk {

void Handle::close()
{
    if (isOpen()) {
        CloseHandle(reinterpret_cast<HANDLE>(m_value));
        m_value = kNone;
    }
}

Handle createExclusively(const QString& path, QString* error)
{
    Handle handle =
        opened(CreateFileW(nativePath(path).c_str(), GENERIC_READ | GENERIC_WRITE, kShareAll,
                           nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!handle.isOpen()) {
        fill(error, creationError(path, GetLastError()));
    }
    return handle;
}

bool isAt(const Handle& handle, const QString& path)
{
    const Handle there = opened(CreateFileW(nativePath(path).c_str(), 0, kShareAll, nullptr,
                                            OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    return there.isOpen() && isSame(handleOf(handle), handleOf(there));
}

bool sync(const Handle& handle, QString* error)
{
    if (FlushFileBuffers(handleOf(handle))) {
        return true;
    }
    fill(error,
         QStringLiteral("The disk did not take the file: %1.").arg(systemText(GetLastError())));
    return false;
}

bool syncFile(const QString& path, QString* error)
{
    const Handle file = opened(CreateFileW(nativePath(path).c_str(), GENERIC_WRITE, kShareAll,
                                           nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!file.isOpen()) {
        fill(error,
             QStringLiteral("%1 cannot be opened: %2.").arg(path, systemText(GetLastError())));
        return false;
    }
    return sync(file, error);
}

bool syncFolder(const QString& /*folder*/)
{
    // NTFS writes its entries through the journal; folders cannot be flushed by themselves.
    return true;
}

bool write(const Handle& handle, const QByteArray& content, QString* error)
{
    DWORD written = 0;
    const DWORD size = static_cast<DWORD>(content.size());
    if (WriteFile(handleOf(handle), content.constData(), size, &written, nullptr) &&
        written == size) {
        return true;
    }
    fill(error, QStringLiteral("Writing failed: %1.").arg(systemText(GetLastError())));
    return false;
}

bool replace(const QString& from, const QString& to, QString* error)
{
    if (MoveFileExW(nativePath(from).c_str(), nativePath(to).c_str(),
                    MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH)) {
        return true;
    }
    fill(error, QStringLiteral("%1 cannot be renamed to %2: %3.")
                    .arg(from, to, systemText(GetLastError())));
    return false;
}

void hide(const QString& path)
{
    SetFileAttributesW(nativePath(path).c_str(), FILE_ATTRIBUTE_HIDDEN);
}

bool isNameTooLong(const QString& fileName)
{
    return fileName.size() > kMaxNameUnits;
}

QByteArray locationFor(const QString& path)
{
    return path.toUtf8();
}

} // namespace KdDisk
