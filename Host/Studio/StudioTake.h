#pragma once

#include <QDateTime>
#include <QMetaType>
#include <QSize>
#include <QString>

/** One recording in the take list. */
struct StudioTake
{
    enum class State
    {
        Checking,  ///< not looked into yet
        Good,      ///< can be played
        Missing,   ///< no file at the path
        Unreadable ///< a file that cannot be played
    };

    QString path; ///< absolute, with forward slashes
    QString deviceName;
    qint64 durationMs = 0;
    QDateTime recorded; ///< UTC
    QString fileInfo;   ///< the JSON texts that came with it, as they came
    QString fileExportInfo;
    QSize picture; ///< of the moving picture, known once it was looked into; invalid: sound alone
    State state = State::Checking;
    QString problem; ///< why it is unreadable, as probeMedia() said it

    /** The file's name without folder and suffix. */
    QString name() const;
};

bool operator==(const StudioTake& left, const StudioTake& right);

/** A take as sigFinished of a recording dialog describes it. What the JSON lacks stays empty. */
StudioTake takeFromReport(const QString& path, const QString& fileInfo,
                          const QString& fileExportInfo);

/** "0:07", "12:34" or "1:02:03"; rounds down. */
QString formatTakeLength(qint64 milliseconds);

Q_DECLARE_METATYPE(StudioTake)
