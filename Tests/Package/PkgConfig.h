#pragma once

#include <QString>
#include <QStringList>

/** The installed package, as build systems other than CMake find it. */
namespace PkgConfig {

/** @return the compiler's flags for one of the libraries; empty when it is not described. */
QStringList flags(const QString& library);

/**
 * Runs the compiler with the flags of KdRecord.
 * @param arguments come before these
 * @return what it complains of; empty when it succeeds.
 */
QString compile(const QStringList& arguments);

} // namespace PkgConfig
