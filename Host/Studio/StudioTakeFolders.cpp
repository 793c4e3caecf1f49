#include <Studio/StudioTakeFolders.h>

#include <KdZentraCore/KdConfigEngine.h>

#include <QJsonArray>
#include <QJsonDocument>

namespace {

constexpr int kUserScope = 1;
/** Each is searched at every start. */
constexpr int kMostFolders = 8;

QString group()
{
    return QStringLiteral("Studio");
}

QString key()
{
    return QStringLiteral("TakeFolders");
}

} // namespace

void StudioTakeFolders::remember(const QString& folder)
{
    QStringList folders = remembered();
    folders.removeAll(folder);
    folders.prepend(folder);
    const QJsonArray kept = QJsonArray::fromStringList(folders.mid(0, kMostFolders));
    KdConfigEngine::instance()->setValue(
        kUserScope, group(), key(),
        QString::fromUtf8(QJsonDocument(kept).toJson(QJsonDocument::Compact)));
}

QStringList StudioTakeFolders::remembered()
{
    const QString text = KdConfigEngine::instance()->value(kUserScope, group(), key()).toString();
    const QJsonArray values = QJsonDocument::fromJson(text.toUtf8()).array();
    QStringList folders;
    for (const QJsonValue& value : values) {
        if (!value.toString().isEmpty()) {
            folders.append(value.toString());
        }
    }
    folders.removeDuplicates();
    return folders.mid(0, kMostFolders);
}
