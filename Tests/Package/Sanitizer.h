#pragma once

#include <QString>

/** The libraries may be built with a sanitizer, which then has to be in the program as well. */
namespace Sanitizer {

/** @return the compiler's flag; empty without a sanitizer. */
inline QString compilerFlag()
{
    const QString sanitizer = QStringLiteral(KD_SANITIZE);
    if (sanitizer == QLatin1String("address")) {
        return QStringLiteral("-fsanitize=address,undefined");
    }
    return sanitizer.isEmpty() ? QString() : QStringLiteral("-fsanitize=") + sanitizer;
}

} // namespace Sanitizer
