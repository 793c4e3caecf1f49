#pragma once

#include <KdWidgets/KdWidgetsExport.h>

#include <QWidget>

/** A one-pixel separator in a colour of the skin. */
class KDWIDGETS_EXPORT KdLineWidget : public QWidget
{
    Q_OBJECT

public:
    /** @param skinColor a KdSkin::SkinColor; anything else gives the stroke colour. */
    KdLineWidget(Qt::Orientation orientation, int skinColor, QWidget* parent = nullptr);
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    Qt::Orientation m_orientation;
    int m_nSkinColor;
};
