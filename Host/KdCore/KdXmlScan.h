#pragma once

#include <KdCore/KdCoreExport.h>

#include <QByteArray>
#include <QString>

/**
 * Decides whether XML from outside may be handed to QDomDocument, which parses and destroys a tree
 * by recursion and so falls over documents that are deep enough. Reentrant.
 */
class KDCORE_EXPORT KdXmlScan
{
public:
    static constexpr int kMaxBytes = 4 * 1024 * 1024;
    static constexpr int kMaxDepth = 256;
    static constexpr int kMaxElements = 100000;

    /**
     * @return whether content is well-formed, has a document element, declares no entities and
     * stays within the limits. Its own encoding declaration counts.
     */
    static bool isAcceptable(const QByteArray& content);
    /** The same for text that is decoded already; a length of kMaxBytes characters is the limit. */
    static bool isAcceptable(const QString& text);

    /** @return text without the characters that XML cannot hold, such as control characters. */
    static QString withoutForbiddenCharacters(const QString& text);
};
