#include "KdDomDocument.h"

#include "KdBaseLog.h"
#include "KdSafeFile.h"
#include "KdXmlScan.h"

#include <QFile>
#include <QTextStream>

namespace {

constexpr int kIndent = 4;

QString toUtf8Xml(const QDomDocument& document)
{
    QString text;
    QTextStream stream(&text, QIODevice::WriteOnly);
    stream.setCodec("UTF-8");
    // Whatever encoding the document was read in, its declaration must name the one it is written
    // in.
    document.save(stream, kIndent, QDomNode::EncodingFromTextStream);
    stream.flush();
    return text;
}

std::optional<QString> readText(const QString& path)
{
    const std::optional<QByteArray> content = KdSafeFile::read(path, KdXmlScan::kMaxBytes);
    return content ? KdXmlScan::decode(*content) : std::nullopt;
}

bool isWritable(const QString& path)
{
    return QFile(path).open(QIODevice::ReadWrite | QIODevice::ExistingOnly);
}

/** The element after this one in document order, without leaving root. */
QDomElement nextInDocument(const QDomElement& element, const QDomElement& root)
{
    const QDomElement child = element.firstChildElement();
    if (!child.isNull()) {
        return child;
    }
    QDomElement current = element;
    while (current != root) {
        const QDomElement sibling = current.nextSiblingElement();
        if (!sibling.isNull()) {
            return sibling;
        }
        current = current.parentNode().toElement();
    }
    return QDomElement();
}

} // namespace

bool KdDomDocument::createXmlFile(const QString& path, const QString& rootName)
{
    QDomDocument document;
    document.appendChild(document.createElement(rootName));
    return saveXmlContent2File(document, path);
}

bool KdDomDocument::openXmlFile(QDomDocument& document, const QString& path,
                                QIODevice::OpenMode mode)
{
    const std::optional<QString> text = readText(path);
    if (!text || !KdXmlScan::isAcceptable(*text)) {
        return false;
    }
    if (mode.testFlag(QIODevice::WriteOnly) && !isWritable(path)) {
        return false;
    }
    QDomDocument parsed;
    if (!parsed.setContent(*text) || parsed.documentElement().isNull()) {
        return false;
    }
    document = parsed;
    return true;
}

bool KdDomDocument::saveXmlContent2File(const QDomDocument& document, const QString& path)
{
    const QString text = toUtf8Xml(document);
    if (!KdXmlScan::isAcceptable(text)) {
        KdBaseLog::write(KdBaseLog::Warning,
                         {"Host/KdCore/KdDomDocument", "KdDomDocument::saveXmlContent2File"},
                         "The document for %s could not be read again, so it is not written",
                         path.toUtf8().constData());
        return false;
    }
    return KdSafeFile::replace(path, text.toUtf8());
}

QDomElement KdDomDocument::getElementByTagName(const QDomElement& parent, const QString& tagName)
{
    QDomElement element = nextInDocument(parent, parent);
    while (!element.isNull() && element.tagName() != tagName) {
        element = nextInDocument(element, parent);
    }
    return element;
}
