#pragma once

#include <KdVBLModel/KdVBLModelExport.h>

#include <QByteArray>
#include <QString>

#include <utility>

/**
 * The file operations that Qt has no portable, durable form of. Reentrant. Every error is one plain
 * sentence; the pointers to it may be null.
 */
namespace KdDisk {

/** An open file that closes itself. */
class KDVBLMODEL_EXPORT Handle
{
public:
    Handle() = default;
    explicit Handle(qintptr value) : m_value(value) {}
    Handle(Handle&& other) noexcept : m_value(std::exchange(other.m_value, kNone)) {}
    Handle& operator=(Handle&& other) noexcept;
    ~Handle() { close(); }

    bool isOpen() const { return m_value != kNone; }
    qintptr value() const { return m_value; }
    void close();

private:
    Q_DISABLE_COPY(Handle)
    static constexpr qintptr kNone = -1;
    qintptr m_value = kNone;
};

/** Makes a new file. @return a closed handle when it cannot be made or something of that name
 * exists. */
Handle createExclusively(const QString& path, QString* error);

/** Whether the file behind handle is the one that path leads to now. */
bool isAt(const Handle& handle, const QString& path);

/** Waits until the content is on disk. */
bool sync(const Handle& handle, QString* error);
bool syncFile(const QString& path, QString* error);

/** Waits until the folder's entries are on disk; true where the file system has no such promise. */
bool syncFolder(const QString& folder);

/** Writes all of content. */
bool write(const Handle& handle, const QByteArray& content, QString* error);

/** Moves from onto to, in one step that leaves either the old or the new file at to. */
bool replace(const QString& from, const QString& to, QString* error);

/** Lets file browsers leave it out, where a leading dot does not do that. */
void hide(const QString& path);

/** Whether file systems refuse a file of this name for its length. */
bool isNameTooLong(const QString& fileName);

/** path in the encoding that GStreamer takes file names in. */
KDVBLMODEL_EXPORT QByteArray locationFor(const QString& path);

} // namespace KdDisk
