#include <KdRecord/KdCountdownBox.h>

#include <KdWidgets/KdDoubleSpinBox.h>

KdDoubleSpinBox* KdCountdownBox::create(QWidget* parent)
{
    auto* const box = new KdDoubleSpinBox(parent);
    box->setDecimals(0);
    box->setRange(0, kMostSeconds);
    return box;
}

int KdCountdownBox::seconds(const KdDoubleSpinBox& box)
{
    const QString text = box.editText();
    return text.isEmpty() ? kDefaultSeconds : box.locale().toInt(text);
}
