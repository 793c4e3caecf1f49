#pragma once

#include <KdCore/KdCoreExport.h>

#include <QDomDocument>
#include <QIODevice>
#include <QString>

/** XML files as DOM documents, within the limits of KdXmlScan. Reentrant. */
class KDCORE_EXPORT KdDomDocument
{
public:
    /** Writes a new file: an XML declaration with UTF-8 and an empty document element. @return
     * success */
    static bool createXmlFile(const QString& path, const QString& rootName);

    /**
     * Reads a file into document.
     * @param mode as the document will be used; with ReadWrite the file must be writable as well.
     * @return false when the file is none or cannot be opened, or KdXmlScan does not accept it;
     * document is then left as it was.
     */
    static bool openXmlFile(QDomDocument& document, const QString& path, QIODevice::OpenMode mode);

    /**
     * Writes the document, indented, UTF-8. The old file stays whole unless every byte is on disk.
     * @return false, with a warning in the log, when that failed or the document could not be
     * opened again.
     */
    static bool saveXmlContent2File(const QDomDocument& document, const QString& path);

    /** @return the first element of that name beneath parent, in document order, at any depth; or a
     * null one. */
    static QDomElement getElementByTagName(const QDomElement& parent, const QString& tagName);
};
