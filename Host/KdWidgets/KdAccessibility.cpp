#include "KdAccessibility.h"

#include <KdWidgets/KOldMessageDialog.h>
#include <KdWidgets/KdAudioVolumeWidget.h>
#include <KdWidgets/KdPopovers.h>
#include <KdWidgets/KdTipWidget.h>
#include <KdWidgets/KdTitleBar.h>
#include <KdWidgets/KdToast.h>

#include <QAccessibleWidget>

namespace {

class AccessibleLevel : public QAccessibleWidget, public QAccessibleValueInterface
{
public:
    explicit AccessibleLevel(KdAudioVolumeWidget* meter)
        : QAccessibleWidget(meter, QAccessible::ProgressBar)
    {
    }

    void* interface_cast(QAccessible::InterfaceType type) override
    {
        return type == QAccessible::ValueInterface ? static_cast<QAccessibleValueInterface*>(this)
                                                   : QAccessibleWidget::interface_cast(type);
    }

    QString text(QAccessible::Text kind) const override
    {
        return kind == QAccessible::Value ? QString::number(currentValue().toInt())
                                          : QAccessibleWidget::text(kind);
    }

    QVariant currentValue() const override
    {
        return qRound(static_cast<KdAudioVolumeWidget*>(widget())->volume());
    }
    void setCurrentValue(const QVariant& /*value*/) override {}
    QVariant maximumValue() const override { return 100; }
    QVariant minimumValue() const override { return 0; }
    QVariant minimumStepSize() const override { return 1; }
};

QAccessibleInterface* createInterface(const QString& /*className*/, QObject* object)
{
    if (auto* meter = qobject_cast<KdAudioVolumeWidget*>(object)) {
        return new AccessibleLevel(meter);
    }
    if (auto* toast = qobject_cast<KdToast*>(object)) {
        return new QAccessibleWidget(toast, QAccessible::AlertMessage);
    }
    if (auto* message = qobject_cast<KOldMessageDialog*>(object)) {
        return new QAccessibleWidget(message, QAccessible::AlertMessage);
    }
    if (auto* tip = qobject_cast<KdTipWidget*>(object)) {
        return new QAccessibleWidget(tip, QAccessible::ToolTip);
    }
    if (auto* popover = qobject_cast<KdPopovers*>(object)) {
        return new QAccessibleWidget(popover, QAccessible::Dialog);
    }
    if (auto* bar = qobject_cast<KdTitleBar*>(object)) {
        return new QAccessibleWidget(bar, QAccessible::TitleBar);
    }
    return nullptr;
}

} // namespace

void KdAccessibility::install()
{
    // Qt installs a factory once, however often it is told to.
    QAccessible::installFactory(createInterface);
}
