#pragma once

#include <KdWidgets/KdWidget.h>

class KdLabel;
class QHBoxLayout;

/** A bar at the top of the window: a sign, a heading, a quieter sentence, and room for controls at
 * the right. */
class StudioNoticeBar : public KdWidget
{
    Q_OBJECT

public:
    /** @param skinColor a KdSkin::SkinColor for the sign */
    StudioNoticeBar(const QString& iconName, int skinColor, QWidget* parent = nullptr);

    void setTexts(const QString& heading, const QString& sentence);
    QString heading() const;
    QString sentence() const;

protected:
    void showEvent(QShowEvent* event) override;
    QHBoxLayout* controls() const { return m_pControls; }

private:
    void layOut();
    void refreshIcon();
    /** To assistive technology. */
    void announce();

    QString m_iconName;
    int m_skinColor;
    KdLabel* m_pIcon;
    KdLabel* m_pHeading;
    KdLabel* m_pSentence;
    QHBoxLayout* m_pControls;
};
