#include "KdTakeFile.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace {

bool refuse(QString* error, const QString& sentence)
{
    if (error) {
        *error = sentence;
    }
    return false;
}

QString nameError(const QString& path)
{
    const QFileInfo file(path);
    if (path.isEmpty()) {
        return QStringLiteral("No output file is set.");
    }
    if (!file.isAbsolute()) {
        return QStringLiteral("The output file %1 is not a full path.").arg(path);
    }
    if (path.contains(QChar::Null) || QFile::decodeName(QFile::encodeName(path)) != path) {
        return QStringLiteral("The path %1 cannot be expressed in this system's file names.")
            .arg(path);
    }
    if (file.fileName().isEmpty()) {
        return QStringLiteral("The output file %1 has no name.").arg(path);
    }
    if (KdDisk::isNameTooLong(file.fileName())) {
        return QStringLiteral("The file name %1 is too long.").arg(file.fileName());
    }
    return QString();
}

} // namespace

KdTakeFile::KdTakeFile() = default;

KdTakeFile::~KdTakeFile()
{
    release();
}

bool KdTakeFile::claim(const QString& path, QString* error)
{
    if (isClaimed()) {
        return refuse(error, QStringLiteral("The file %1 is still claimed.").arg(m_path));
    }
    const QString problem = nameError(path);
    if (!problem.isEmpty()) {
        return refuse(error, problem);
    }
    m_file = KdDisk::createExclusively(path, error);
    if (!m_file.isOpen()) {
        return false;
    }
    m_path = path;
    m_begun = false;
    return true;
}

bool KdTakeFile::claimAgain(const QString& path, QString* error)
{
    if (isClaimed() || !nameError(path).isEmpty() || !QFileInfo(path).isFile()) {
        return claim(path, error);
    }
    const QString aside = previousPath(path);
    if (QFileInfo::exists(aside)) {
        return refuse(error,
                      QStringLiteral("An older take waits to be recovered in %1.").arg(aside));
    }
    if (!KdDisk::replace(path, aside, error)) {
        return false;
    }
    if (!claim(path, error)) {
        KdDisk::replace(aside, path, nullptr);
        return false;
    }
    KdDisk::hide(aside);
    m_asidePath = aside;
    return true;
}

void KdTakeFile::begun()
{
    if (!isClaimed() || m_begun) {
        return;
    }
    m_begun = true;
    if (!m_asidePath.isEmpty()) {
        QFile::remove(m_asidePath);
        m_asidePath.clear();
    }
}

bool KdTakeFile::isInPlace() const
{
    return isClaimed() && KdDisk::isAt(m_file, m_path);
}

bool KdTakeFile::finish(QString* error)
{
    if (!isClaimed()) {
        return refuse(error, QStringLiteral("No file is claimed."));
    }
    const QString path = m_path;
    if (!isInPlace()) {
        begun();
        release();
        return refuse(error, QStringLiteral("The file %1 is no longer there.").arg(path));
    }
    if (QFileInfo(path).size() == 0) {
        m_begun = false;
        release();
        return refuse(error, QStringLiteral("Nothing was written to the file %1.").arg(path));
    }
    begun();
    const KdDisk::Handle file = std::move(m_file);
    forget();
    if (!KdDisk::sync(file, error)) {
        return false;
    }
    return KdDisk::syncFolder(QFileInfo(path).path()) ||
           refuse(error, QStringLiteral("The entry of %1 did not reach the disk.").arg(path));
}

void KdTakeFile::release()
{
    if (isClaimed() && !m_begun) {
        putBack();
    }
    m_file.close();
    forget();
}

void KdTakeFile::putBack()
{
    const bool isMine = isInPlace();
    // Where open files cannot be replaced or removed.
    m_file.close();
    if (!m_asidePath.isEmpty()) {
        KdDisk::replace(m_asidePath, m_path, nullptr);
    } else if (isMine) {
        QFile::remove(m_path);
    }
}

void KdTakeFile::forget()
{
    m_path.clear();
    m_asidePath.clear();
    m_begun = false;
}

QString KdTakeFile::previousPath(const QString& path)
{
    return hiddenPathBeside(path, QStringLiteral(".previous"));
}

QString KdTakeFile::hiddenPathBeside(const QString& path, const QString& suffix)
{
    const QFileInfo file(path);
    QString name = QLatin1Char('.') + file.fileName() + suffix;
    if (KdDisk::isNameTooLong(name)) {
        const QByteArray digest =
            QCryptographicHash::hash(file.fileName().toUtf8(), QCryptographicHash::Sha1).toHex();
        name = QLatin1Char('.') + QString::fromLatin1(digest) + suffix;
    }
    return QDir(file.path()).filePath(name);
}

QByteArray KdTakeFile::locationFor(const QString& path)
{
    return KdDisk::locationFor(path);
}
