#pragma once

#include <QString>

/**
 * An example, built as a host's engineer builds it: copied out of the tree, configured against the
 * installed package, made.
 */
class ExampleBuild
{
public:
    /** @param example its folder's name @param place an empty folder that outlives this */
    ExampleBuild(QString example, QString place);

    /** @return what went wrong, with the tools' own words; empty: it is built */
    QString run();
    QString program(const QString& name) const { return m_place + QLatin1String("/build/") + name; }

private:
    bool copySources() const;

    QString m_example;
    QString m_place;
};
