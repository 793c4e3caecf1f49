#include "KdConfigEngine.h"

#include <KCore/KCoreDirs.h>
#include <KdCore/KdBaseLog.h>
#include <KdCore/KdDomDocument.h>
#include <KdCore/KdXmlScan.h>

#include <QFileInfo>
#include <QMap>

namespace {

constexpr int kUserScope = 1;

QString rootTag()
{
    return QStringLiteral("HostConfig");
}
QString groupTag()
{
    return QStringLiteral("Group");
}
QString valueTag()
{
    return QStringLiteral("Value");
}
QString nameAttribute()
{
    return QStringLiteral("name");
}

using Group = QMap<QString, QString>;
using Groups = QMap<QString, Group>;

Group toGroup(const QDomElement& element)
{
    Group group;
    for (QDomElement value = element.firstChildElement(valueTag()); !value.isNull();
         value = value.nextSiblingElement(valueTag())) {
        group.insert(value.attribute(nameAttribute()), value.text());
    }
    return group;
}

Groups toGroups(const QDomDocument& document)
{
    Groups groups;
    const QDomElement root = document.documentElement();
    for (QDomElement group = root.firstChildElement(groupTag()); !group.isNull();
         group = group.nextSiblingElement(groupTag())) {
        groups.insert(group.attribute(nameAttribute()), toGroup(group));
    }
    return groups;
}

QDomElement appendNamed(QDomDocument& document, QDomNode parent, const QString& tag,
                        const QString& name)
{
    QDomElement element = document.createElement(tag);
    element.setAttribute(nameAttribute(), name);
    parent.appendChild(element);
    return element;
}

QDomDocument toDocument(const Groups& groups)
{
    QDomDocument document;
    QDomElement root = document.createElement(rootTag());
    document.appendChild(root);
    for (auto group = groups.cbegin(); group != groups.cend(); ++group) {
        const QDomElement parent = appendNamed(document, root, groupTag(), group.key());
        for (auto value = group->cbegin(); value != group->cend(); ++value) {
            QDomElement element = appendNamed(document, parent, valueTag(), value.key());
            element.appendChild(document.createTextNode(value.value()));
        }
    }
    return document;
}

} // namespace

class KdConfigEngine::Private
{
public:
    /** Reads the file of the document folder, unless that is the folder the values came from. */
    void followFolder();
    bool store();

    QString path;
    Groups groups;
    bool isStored = true;
};

void KdConfigEngine::Private::followFolder()
{
    const QString current = getZentraDocumentDir() + QStringLiteral("/HostConfig.xml");
    if (current == path) {
        return;
    }
    path = current;
    groups.clear();
    isStored = true;
    QDomDocument document;
    if (KdDomDocument::openXmlFile(document, path, QIODevice::ReadOnly)) {
        groups = toGroups(document);
    } else if (QFileInfo::exists(path)) {
        KdBaseLog::write(KdBaseLog::Warning,
                         {"Host/KdZentraCore/KdConfigEngine", "KdConfigEngine::followFolder"},
                         "The configuration %s cannot be read and counts as empty",
                         path.toUtf8().constData());
    }
}

bool KdConfigEngine::Private::store()
{
    isStored = KdDomDocument::saveXmlContent2File(toDocument(groups), path);
    return isStored;
}

KdConfigEngine::KdConfigEngine() : d(std::make_unique<Private>()) {}

KdConfigEngine::~KdConfigEngine() = default;

KdConfigEngine* KdConfigEngine::instance()
{
    static KdConfigEngine engine;
    return &engine;
}

bool KdConfigEngine::setValue(int scope, const QString& group, const QString& key,
                              const QVariant& value)
{
    if (scope != kUserScope || group.isEmpty() || key.isEmpty() ||
        !value.canConvert(QMetaType::QString)) {
        return false;
    }
    d->followFolder();
    const QString text = KdXmlScan::withoutForbiddenCharacters(value.toString());
    Group& values = d->groups[group];
    const bool isSame = values.contains(key) && values.value(key) == text;
    if (isSame && d->isStored) {
        return true;
    }
    values.insert(key, text);
    return d->store();
}

QVariant KdConfigEngine::value(int scope, const QString& group, const QString& key,
                               const QVariant& fallback) const
{
    if (scope != kUserScope) {
        return fallback;
    }
    d->followFolder();
    const Group values = d->groups.value(group);
    const auto found = values.constFind(key);
    return found == values.cend() ? fallback : QVariant(*found);
}
