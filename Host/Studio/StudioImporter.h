#pragma once

#include <Studio/StudioMediaProbe.h>
#include <Studio/StudioTake.h>

#include <QHash>
#include <QObject>
#include <QString>

class StudioTakeAnalyser;
class StudioTakeLibrary;

/** Looks into every file before it is listed, and into the listed ones again when they come back.
 * GUI thread. */
class StudioImporter : public QObject
{
    Q_OBJECT

public:
    /** @param library, analyser must outlive the importer */
    StudioImporter(StudioTakeLibrary* library, StudioTakeAnalyser* analyser,
                   QObject* parent = nullptr);

    /** Takes what a recorder reported; one of the signals follows, skipped() at once for an empty
     * path. */
    void import(const QString& path, const QString& fileInfo, const QString& fileExportInfo);
    /** Lists at once what is still being looked into, to be checked at the next start: the program
     * ends. */
    void flush();

Q_SIGNALS:
    void imported(const QString& path);
    /** @param why a sentence */
    void failed(const QString& path, const QString& why);
    void skipped();

private:
    void handleProbed(const QString& path, const StudioMediaInfo& info);
    void finish(StudioTake take, const StudioMediaInfo& info);

    StudioTakeLibrary* m_pLibrary;
    StudioTakeAnalyser* m_pAnalyser;
    QHash<QString, StudioTake> m_pending;
};
