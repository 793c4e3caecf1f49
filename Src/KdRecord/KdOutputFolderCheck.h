#pragma once

#include <KdWidgets/KdLiveText.h>

#include <QCoreApplication>
#include <QString>

#include <functional>

class QWidget;

/**
 * Looks, before a take, whether its folder will do, and asks the user where that is a question.
 * GUI thread.
 */
class KdOutputFolderCheck
{
    Q_DECLARE_TR_FUNCTIONS(KdOutputFolderCheck)

public:
    /** @return free space on the volume of path in MB, negative when it cannot be told. */
    using FreeMegabytes = std::function<qint64(const QString& path)>;

    enum Verdict : int
    {
        Usable,
        NoPermission, ///< cannot be made, is no folder, or cannot be read and written
        LowSpace
    };

    static constexpr qint64 kEnoughMegabytes = 500;

    /** Asks the file system. */
    KdOutputFolderCheck();
    explicit KdOutputFolderCheck(FreeMegabytes freeMegabytes);

    /** Makes the folder where it is missing. Shows nothing. */
    Verdict examine(const QString& folder) const;

    /**
     * @return whether there is too little space for a take; false when that cannot be told. Does
     * not make the folder.
     */
    bool isShortOfSpace(const QString& folder) const;

    /**
     * Examines the folder and, unless it is usable, shows a modal message above parent. That runs a
     * nested event loop: whoever calls must look whether it still exists itself.
     * @param permissionTitle of the message that nothing can be read or written there; empty: the
     * application's display name
     * @return whether to record: on little space only when the user explicitly declined to choose
     * another folder.
     */
    bool mayRecordInto(const QString& folder, QWidget* parent,
                       const KdLiveText& permissionTitle = KdLiveText()) const;

    /** Shows that nothing can be read or written there. Modal, with a title, as above. */
    static void tellNoPermission(QWidget* parent, const KdLiveText& title = KdLiveText());

private:
    FreeMegabytes m_freeMegabytes;
};
