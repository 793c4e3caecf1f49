#pragma once

#include <QByteArray>
#include <QString>
#include <QVector>

/** Files that tests make and read. Failing to is a failure of the test at hand. */
namespace TestFiles {

/** Makes the folders above as well. */
void write(const QString& path, const QByteArray& content);
/** @return the whole content, null when there is no such file. */
QByteArray read(const QString& path);

struct BadXml
{
    const char* name;
    QByteArray content;
};

/**
 * What may stand where an XML file is expected, and must be refused.
 * @param root a document element's name; @param inner well-formed content for within it.
 */
QVector<BadXml> badXml(const QByteArray& root, const QByteArray& inner);

} // namespace TestFiles
