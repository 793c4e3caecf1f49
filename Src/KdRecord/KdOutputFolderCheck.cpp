#include <KdRecord/KdOutputFolderCheck.h>

#include <KdCore/KdDir.h>
#include <KdWidgets/KOldMessageDialog.h>

#include <QDir>
#include <QFileInfo>

#include <utility>

KdOutputFolderCheck::KdOutputFolderCheck()
    : KdOutputFolderCheck([](const QString& path) { return KdDir::getDiskFreeSpace(path, 0); })
{
}

KdOutputFolderCheck::KdOutputFolderCheck(FreeMegabytes freeMegabytes)
    : m_freeMegabytes(std::move(freeMegabytes))
{
}

KdOutputFolderCheck::Verdict KdOutputFolderCheck::examine(const QString& folder) const
{
    const bool isThere = !folder.isEmpty() && (QFileInfo::exists(folder) || QDir().mkpath(folder));
    if (!isThere || !KdDir::IsPathWriteAndReadable(folder)) {
        return NoPermission;
    }
    return isShortOfSpace(folder) ? LowSpace : Usable;
}

bool KdOutputFolderCheck::isShortOfSpace(const QString& folder) const
{
    const qint64 free = m_freeMegabytes(folder);
    // A volume that does not tell its free space is no reason to bother the user.
    return free >= 0 && free < kEnoughMegabytes;
}

bool KdOutputFolderCheck::mayRecordInto(const QString& folder, QWidget* parent,
                                        const KdLiveText& permissionTitle) const
{
    switch (examine(folder)) {
    case NoPermission:
        tellNoPermission(parent, permissionTitle);
        return false;
    case LowSpace: {
        const auto question = [free = m_freeMegabytes(folder)] {
            return tr("There is only %1MB space in the specified output directory, Would you "
                      "choose another directory?")
                .arg(free);
        };
        return KOldMessageDialog::Question_YesNo(question, parent) == QDialogButtonBox::No;
    }
    case Usable:
        break;
    }
    return true;
}

void KdOutputFolderCheck::tellNoPermission(QWidget* parent, const KdLiveText& title)
{
    KOldMessageDialog::Infomation(
        [] {
            return tr("Please check whether you have permission to write or read on the path, or "
                      "choose other path to create.");
        },
        parent, QDialogButtonBox::Ok, title);
}
