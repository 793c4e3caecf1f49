#include "PseudoTranslator.h"

#include <QCoreApplication>
#include <QTextDocument>
#include <QTextDocumentFragment>

namespace {

constexpr QChar kOpen(0x27e6);
constexpr QChar kClose(0x27e7);

} // namespace

PseudoTranslator::PseudoTranslator()
{
    QCoreApplication::installTranslator(this);
}

PseudoTranslator::~PseudoTranslator()
{
    QCoreApplication::removeTranslator(this);
}

QString PseudoTranslator::translate(const char* /*context*/, const char* sourceText,
                                    const char* /*disambiguation*/, int /*n*/) const
{
    const QString source = QString::fromUtf8(sourceText);
    const QString padding(source.size() / 3, QLatin1Char('~'));
    return kOpen + source + padding + kClose;
}

QString PseudoTranslator::untranslatedPart(const QString& text)
{
    const QString shown =
        Qt::mightBeRichText(text) ? QTextDocumentFragment::fromHtml(text).toPlainText() : text;
    QString left;
    int depth = 0; // a translation may be an argument of another
    for (const QChar character : shown) {
        if (character == kOpen) {
            ++depth;
        } else if (character == kClose) {
            --depth;
        } else if (depth == 0) {
            left += character;
        }
    }
    return left;
}
