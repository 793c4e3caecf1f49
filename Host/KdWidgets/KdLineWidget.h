#pragma once

#include <KdWidgets/KdWidgetsExport.h>

#include <QWidget>

/**
 * A one-pixel separator in a colour of the skin, which it follows when that changes. GUI thread.
 */
class KDWIDGETS_EXPORT KdLineWidget : public QWidget
{
    Q_OBJECT

public:
    /**
     * @param orientation Qt::Horizontal lies and takes the width there is, Qt::Vertical stands.
     * @param skinColor a KdSkin::SkinColor; anything else gives the stroke colour.
     * @param parent owns the line; may be null.
     */
    KdLineWidget(Qt::Orientation orientation, int skinColor, QWidget* parent = nullptr);
    /** @return 16 x 1, or 1 x 16 where it stands. */
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    Qt::Orientation m_orientation;
    int m_nSkinColor;
};
