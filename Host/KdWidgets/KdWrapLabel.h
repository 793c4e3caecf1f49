#pragma once

#include <KdWidgets/KdWidgetsExport.h>

#include <QLabel>

/**
 * Plain text over as many lines as it needs. Unlike its base it breaks a word that is wider than a
 * line, so that no name from outside makes a window wider than its text was meant to be.
 */
class KDWIDGETS_EXPORT KdWrapLabel : public QLabel
{
    Q_OBJECT

public:
    /**
     * @param widest the width in pixels from which on the text is broken
     * @param mostLines from which on it ends in an ellipsis; 0: all
     */
    KdWrapLabel(const QString& text, int widest, int mostLines, QWidget* parent = nullptr);
    ~KdWrapLabel() override;

    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QStringList lines(int width) const;

    int m_nWidest;
    int m_nMostLines;
};
