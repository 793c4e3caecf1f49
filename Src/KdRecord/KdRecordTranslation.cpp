#include "KdRecordTranslation.h"

#include <QCoreApplication>
#include <QPointer>
#include <QTranslator>

#include <memory>

namespace KdRecordTranslation {

namespace {

// Owned by the application, so that it goes when that goes.
QPointer<QTranslator>& installed()
{
    static QPointer<QTranslator> translator;
    return translator;
}

} // namespace

QStringList languages()
{
    return {QStringLiteral("de"), QStringLiteral("zh_CN")};
}

QString languageFor(const QLocale& locale)
{
    if (locale.language() == QLocale::German) {
        return QStringLiteral("de");
    }
    // A reader of traditional characters is not served by simplified ones.
    if (locale.language() == QLocale::Chinese && locale.script() == QLocale::SimplifiedHanScript) {
        return QStringLiteral("zh_CN");
    }
    return QString();
}

bool install(const QLocale& locale)
{
    const QString language = languageFor(locale);
    if (language.isEmpty()) {
        remove();
        return locale.language() == QLocale::English || locale.language() == QLocale::C;
    }
    auto translator = std::make_unique<QTranslator>();
    if (!translator->load(QStringLiteral(":/translations/KdRecord_%1.qm").arg(language))) {
        return false;
    }
    remove();
    translator->setParent(QCoreApplication::instance());
    installed() = translator.release();
    return QCoreApplication::installTranslator(installed());
}

void remove()
{
    // Deleting a translator takes it out of the application.
    delete installed();
}

} // namespace KdRecordTranslation
