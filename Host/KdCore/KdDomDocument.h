#pragma once

#include <KdCore/KdCoreExport.h>

#include <QDomDocument>
#include <QIODevice>
#include <QString>

/** XML files as DOM documents, within the limits of KdXmlScan. Reentrant. */
class KDCORE_EXPORT KdDomDocument
{
public:
    /**
     * Writes a new file: an XML declaration with UTF-8 and an empty document element. A file that
     * is there is replaced.
     * @param path of the file, in a folder that exists.
     * @param rootName tag of the document element; one that is no XML name is refused.
     * @return success; a failure is logged.
     */
    static bool createXmlFile(const QString& path, const QString& rootName);

    /**
     * Reads a file.
     * @param document receives the content; left as it was on failure.
     * @param path of the file.
     * @param mode as the document will be used; with QIODevice::ReadWrite the file must be writable
     * as well.
     * @return false when there is no ordinary file or it cannot be opened, or KdXmlScan does not
     * accept what it holds.
     */
    static bool openXmlFile(QDomDocument& document, const QString& path, QIODevice::OpenMode mode);

    /**
     * Writes a document, indented, UTF-8. The old file stays whole unless every byte is on disk.
     * @param document what to write.
     * @param path of the file, in a folder that exists.
     * @return false, with a warning in the log, when that failed or the document could not be
     * opened again.
     */
    static bool saveXmlContent2File(const QDomDocument& document, const QString& path);

    /**
     * @param parent searched at any depth, itself left out.
     * @param tagName of the element.
     * @return the first element of that name, in document order; a null one when there is none.
     */
    static QDomElement getElementByTagName(const QDomElement& parent, const QString& tagName);
};
