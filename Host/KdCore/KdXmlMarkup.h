#pragma once

#include <QString>

/**
 * Looks over the markup of an XML text in one pass, well-formed or not, without building anything.
 * Where it takes malformed markup to end earlier than a parser would it sees too much, never too
 * little.
 */
class KdXmlMarkup
{
public:
    explicit KdXmlMarkup(const QString& text) : m_text(text) {}

    /** @return whether no element has more attributes than that, and no document type has
     * declarations of its own. */
    bool isHarmless(int maxAttributes);

private:
    bool skipMarkup(int maxAttributes);
    void skipBeyond(const char* end);
    /** @return how often the character stands in the tag outside quotes. */
    int skipTagCounting(QLatin1Char counted);
    bool startsWith(const char* text) const;

    const QString m_text;
    int m_position = 0;
};
