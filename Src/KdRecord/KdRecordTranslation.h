#pragma once

#include <KdRecord/KdRecordExport.h>

#include <QLocale>
#include <QString>
#include <QStringList>

/**
 * The texts of the module, of the widget kit and of the reference editor in other languages than
 * English. The application's own texts and those of Qt are its own business. GUI thread.
 */
namespace KdRecordTranslation {

/** @return the languages that there are besides English, as "de" and "zh_CN". */
KDRECORD_EXPORT QStringList languages();

/**
 * @param locale of the user.
 * @return which of languages() a locale gets; empty for English and for a language that there is
 * not.
 */
KDRECORD_EXPORT QString languageFor(const QLocale& locale);

/**
 * Shows all texts in the language of a locale from now on, open dialogs included; English when
 * there is no other. May be called again at any time; needs an application object.
 * @param locale of the user.
 * @return whether the texts are in the language of the locale.
 */
KDRECORD_EXPORT bool install(const QLocale& locale);

/** Shows all texts in English. */
KDRECORD_EXPORT void remove();

} // namespace KdRecordTranslation
