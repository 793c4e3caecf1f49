#include "KdXmlMarkup.h"

bool KdXmlMarkup::isHarmless(int maxAttributes)
{
    m_position = m_text.indexOf(QLatin1Char('<'));
    while (m_position >= 0) {
        if (!skipMarkup(maxAttributes)) {
            return false;
        }
        m_position = m_text.indexOf(QLatin1Char('<'), m_position);
    }
    return true;
}

bool KdXmlMarkup::skipMarkup(int maxAttributes)
{
    if (startsWith("<!--")) {
        skipBeyond("-->");
        return true;
    }
    if (startsWith("<![CDATA[")) {
        skipBeyond("]]>");
        return true;
    }
    if (startsWith("<?")) {
        skipBeyond("?>");
        return true;
    }
    if (startsWith("<!")) {
        return skipTagCounting(QLatin1Char('[')) == 0;
    }
    return skipTagCounting(QLatin1Char('=')) <= maxAttributes;
}

void KdXmlMarkup::skipBeyond(const char* end)
{
    const int found = m_text.indexOf(QLatin1String(end), m_position);
    m_position = found < 0 ? m_text.size() : found + 1;
}

int KdXmlMarkup::skipTagCounting(QLatin1Char counted)
{
    int count = 0;
    QChar quote;
    for (++m_position; m_position < m_text.size(); ++m_position) {
        const QChar character = m_text.at(m_position);
        if (!quote.isNull()) {
            quote = character == quote ? QChar() : quote;
        } else if (character == QLatin1Char('"') || character == QLatin1Char('\'')) {
            quote = character;
        } else if (character == QLatin1Char('>')) {
            break;
        } else if (character == counted) {
            ++count;
        }
    }
    return count;
}

bool KdXmlMarkup::startsWith(const char* text) const
{
    return m_text.midRef(m_position).startsWith(QLatin1String(text));
}
