#include "KdXmlScan.h"

#include <QXmlStreamReader>

namespace {

bool declaresEntities(const QXmlStreamReader& reader)
{
    return reader.text().contains(QLatin1String("<!ENTITY"));
}

bool staysWithinLimits(QXmlStreamReader& reader)
{
    int depth = 0;
    int elements = 0;
    while (!reader.atEnd()) {
        const QXmlStreamReader::TokenType token = reader.readNext();
        if (token == QXmlStreamReader::DTD && declaresEntities(reader)) {
            return false;
        }
        if (token == QXmlStreamReader::StartElement) {
            ++elements;
            ++depth;
        }
        if (token == QXmlStreamReader::EndElement) {
            --depth;
        }
        if (depth > KdXmlScan::kMaxDepth || elements > KdXmlScan::kMaxElements) {
            return false;
        }
    }
    return !reader.hasError() && elements > 0;
}

bool isAllowedInXml(uint character)
{
    return character == 0x9 || character == 0xA || character == 0xD ||
           (character >= 0x20 && character <= 0xD7FF) ||
           (character >= 0xE000 && character <= 0xFFFD) ||
           (character >= 0x10000 && character <= 0x10FFFF);
}

} // namespace

bool KdXmlScan::isAcceptable(const QByteArray& content)
{
    QXmlStreamReader reader(content);
    return content.size() <= kMaxBytes && staysWithinLimits(reader);
}

bool KdXmlScan::isAcceptable(const QString& text)
{
    QXmlStreamReader reader(text);
    return text.size() <= kMaxBytes && staysWithinLimits(reader);
}

QString KdXmlScan::withoutForbiddenCharacters(const QString& text)
{
    QVector<uint> kept;
    const QVector<uint> characters = text.toUcs4();
    kept.reserve(characters.size());
    for (const uint character : characters) {
        if (isAllowedInXml(character)) {
            kept.append(character);
        }
    }
    return QString::fromUcs4(kept.constData(), kept.size());
}
