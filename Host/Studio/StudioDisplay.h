#pragma once

#include <QProcessEnvironment>
#include <QString>

/** Finding out that there is no display before QApplication ends the process because of it. */
namespace StudioDisplay {

/** @return sentences that say what is missing, empty when a display is named or none is needed. */
QString missingText(const QProcessEnvironment& environment);

/**
 * While one of these lives, Qt's failure to open the display that is named prints a sentence and
 * ends the process with that status instead of aborting it. One at a time.
 */
class FailureGuard
{
public:
    explicit FailureGuard(int exitStatus);
    ~FailureGuard();

private:
    Q_DISABLE_COPY(FailureGuard)
    QtMessageHandler m_previous;
};

} // namespace StudioDisplay
