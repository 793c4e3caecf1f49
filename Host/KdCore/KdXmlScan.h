#pragma once

#include <KdCore/KdCoreExport.h>

#include <QByteArray>
#include <QString>

#include <optional>

/**
 * Decides whether XML from outside may be handed to QDomDocument, which parses and destroys a tree
 * by recursion and so falls over documents that are deep enough. Takes well under a second for any
 * content. Reentrant.
 */
class KDCORE_EXPORT KdXmlScan
{
public:
    static constexpr int kMaxBytes = 4 * 1024 * 1024; ///< of a file, or characters of a text
    static constexpr int kMaxDepth = 256;             ///< of elements within elements
    static constexpr int kMaxElements = 100000;       ///< of one document
    static constexpr int kMaxAttributes = 256;        ///< of one element

    /**
     * @param content of a file.
     * @return the text in the encoding that the content declares, UTF-8 without a declaration;
     * nothing where the encoding is unknown or the bytes do not keep to it.
     */
    static std::optional<QString> decode(const QByteArray& content);

    /**
     * @param text of a whole document.
     * @return whether text is well-formed, has a document element, carries no document type with
     * declarations of its own, such as entities, and stays within the limits, kMaxBytes characters
     * among them.
     */
    static bool isAcceptable(const QString& text);

    /**
     * @param text any text, names of devices and files for instance.
     * @return text without the characters that XML cannot hold, such as control characters.
     */
    static QString withoutForbiddenCharacters(const QString& text);
};
