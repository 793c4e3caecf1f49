#pragma once

#include <QString>
#include <QTranslator>

/**
 * A language of its own, while it lives: every text in double brackets and a third longer, so that
 * what was not translated shows, and what only just fits.
 */
class PseudoTranslator : public QTranslator
{
public:
    PseudoTranslator();
    ~PseudoTranslator() override;

    QString translate(const char* context, const char* sourceText, const char* disambiguation,
                      int n) const override;
    bool isEmpty() const override { return false; }

    /** @return what of a text does not come from a translation; HTML is read as it is shown. */
    static QString untranslatedPart(const QString& text);
};
