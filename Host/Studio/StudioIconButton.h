#pragma once

#include <KdWidgets/KdToolButton.h>

#include <QString>

/** A tool button with one of Studio's drawings, which follows the skin. */
class StudioIconButton : public KdToolButton
{
    Q_OBJECT

public:
    /** @param objectName also picks its style in the window's sheet */
    StudioIconButton(const QString& objectName, const QString& iconName, QWidget* parent);

    void setIconName(const QString& name);
    QString iconName() const { return m_iconName; }
    /** What it does, as tool tip and as accessible name. */
    void setMeaning(const QString& text);

private:
    void refresh();

    QString m_iconName;
};
