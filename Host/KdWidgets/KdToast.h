#pragma once

#include <KdWidgets/KdWidgetsExport.h>

#include <QPixmap>
#include <QWidget>

/** A short notice at the bottom centre of a window, gone after 3 s. Object name "KdToast". */
class KDWIDGETS_EXPORT KdToast : public QWidget
{
    Q_OBJECT

public:
    /** @param bottomMargin distance from the lower edge of parent's window in pixels. Owned by that
     * window. */
    static KdToast* creatToast(const QString& text, QWidget* parent, const QPixmap& pixmap,
                               int bottomMargin);
    /** Makes a toast that deletes itself and shows it; a toast already on that window goes first.
     */
    static KdToast* showToast(QWidget* parent, const QString& text, const QPixmap& pixmap,
                              int bottomMargin);

    QString text() const { return m_sText; }

protected:
    void showEvent(QShowEvent* event) override;

private:
    KdToast(const QString& text, QWidget* window, const QPixmap& pixmap, int bottomMargin);
    void place();

    QString m_sText;
    int m_nBottomMargin = 0;
};
