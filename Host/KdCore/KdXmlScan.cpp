#include "KdXmlScan.h"

#include "KdXmlMarkup.h"

#include <QTextCodec>
#include <QXmlStreamReader>

namespace {

constexpr int kDeclarationBytes = 1024;

/** The encoding that a byte order mark or the XML declaration names, UTF-8 without either; null for
 * an unknown one. */
QTextCodec* declaredCodec(const QByteArray& content)
{
    if (QTextCodec* const marked = QTextCodec::codecForUtfText(content, nullptr)) {
        return marked;
    }
    QXmlStreamReader reader(content.left(kDeclarationBytes));
    if (reader.readNext() != QXmlStreamReader::StartDocument) {
        return nullptr;
    }
    const QByteArray name = reader.documentEncoding().toLatin1();
    return QTextCodec::codecForName(name.isEmpty() ? QByteArray("UTF-8") : name);
}

bool staysWithinLimits(QXmlStreamReader& reader)
{
    int depth = 0;
    int elements = 0;
    while (!reader.atEnd()) {
        const QXmlStreamReader::TokenType token = reader.readNext();
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

std::optional<QString> KdXmlScan::decode(const QByteArray& content)
{
    const QTextCodec* const codec = declaredCodec(content);
    if (!codec) {
        return std::nullopt;
    }
    QTextCodec::ConverterState state;
    const QString text = codec->toUnicode(content.constData(), content.size(), &state);
    const bool isWhole = state.invalidChars == 0 && state.remainingChars == 0;
    return isWhole ? std::optional<QString>(text) : std::nullopt;
}

bool KdXmlScan::isAcceptable(const QString& text)
{
    // QXmlStreamReader compares every attribute of an element, and every declaration of a document
    // type, with all the others, which takes minutes for a file full of them. So these are looked
    // at first.
    if (text.size() > kMaxBytes || !KdXmlMarkup(text).isHarmless(kMaxAttributes)) {
        return false;
    }
    QXmlStreamReader reader(text);
    reader.setNamespaceProcessing(false);
    return staysWithinLimits(reader);
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
