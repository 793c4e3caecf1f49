#include <Studio/StudioAccessibility.h>

#include <Studio/StudioNoticeBar.h>
#include <Studio/StudioPictureView.h>
#include <Studio/StudioTake.h>
#include <Studio/StudioTimeline.h>
#include <Studio/StudioWaveformView.h>

#include <QAccessibleWidget>

namespace {

/** The place that is played, in milliseconds; setting it asks to go there. */
class AccessiblePlace : public QAccessibleWidget, public QAccessibleValueInterface
{
public:
    explicit AccessiblePlace(StudioWaveformView* view)
        : QAccessibleWidget(view, QAccessible::Slider)
    {
    }

    void* interface_cast(QAccessible::InterfaceType type) override
    {
        return type == QAccessible::ValueInterface ? static_cast<QAccessibleValueInterface*>(this)
                                                   : QAccessibleWidget::interface_cast(type);
    }

    QString text(QAccessible::Text kind) const override
    {
        return kind == QAccessible::Value ? formatTakeLength(view()->position())
                                          : QAccessibleWidget::text(kind);
    }

    QVariant currentValue() const override { return view()->position(); }
    void setCurrentValue(const QVariant& value) override { view()->seek(value.toLongLong()); }
    QVariant maximumValue() const override { return view()->duration(); }
    QVariant minimumValue() const override { return 0; }
    QVariant minimumStepSize() const override { return StudioWaveformView::kKeyStepMs; }

private:
    StudioWaveformView* view() const { return static_cast<StudioWaveformView*>(widget()); }
};

QAccessibleInterface* createInterface(const QString& /*className*/, QObject* object)
{
    if (auto* waveform = qobject_cast<StudioWaveformView*>(object)) {
        return new AccessiblePlace(waveform);
    }
    if (auto* timeline = qobject_cast<StudioTimeline*>(object)) {
        return new QAccessibleWidget(timeline, QAccessible::Graphic);
    }
    if (auto* picture = qobject_cast<StudioPictureView*>(object)) {
        return new QAccessibleWidget(picture, QAccessible::Graphic);
    }
    if (auto* bar = qobject_cast<StudioNoticeBar*>(object)) {
        return new QAccessibleWidget(bar, QAccessible::AlertMessage);
    }
    return nullptr;
}

} // namespace

void StudioAccessibility::install()
{
    // Qt installs a factory once, however often it is told to.
    QAccessible::installFactory(createInterface);
}
