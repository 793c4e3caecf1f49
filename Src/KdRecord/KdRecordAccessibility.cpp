#include "KdRecordAccessibility.h"

#include "KQuestionLabel.h"
#include "KdAnnouncer.h"
#include "KdCountCtrl.h"
#include "KdWebCamDisplayLabel.h"

#include <QAccessibleWidget>

namespace {

QAccessibleInterface* createInterface(const QString& /*className*/, QObject* object)
{
    if (auto* announcer = qobject_cast<KdAnnouncer*>(object)) {
        return new QAccessibleWidget(announcer, QAccessible::AlertMessage);
    }
    if (auto* countdown = qobject_cast<KdCountCtrl*>(object)) {
        return new QAccessibleWidget(countdown, QAccessible::AlertMessage);
    }
    if (auto* picture = qobject_cast<KdWebCamDisplayLabel*>(object)) {
        return new QAccessibleWidget(picture, QAccessible::Graphic);
    }
    if (auto* question = qobject_cast<KQuestionLabel*>(object)) {
        return new QAccessibleWidget(question, QAccessible::HelpBalloon);
    }
    return nullptr;
}

} // namespace

void KdRecordAccessibility::install()
{
    // Qt installs a factory once, however often it is told to.
    QAccessible::installFactory(createInterface);
}
