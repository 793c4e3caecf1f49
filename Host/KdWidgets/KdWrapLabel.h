#pragma once

#include <KdWidgets/KdWidgetsExport.h>

#include <QLabel>

/**
 * Plain text over as many lines as it needs. Unlike its base it breaks a word that is wider than a
 * line, so that no name from outside makes a window wider than its text was meant to be. GUI
 * thread.
 */
class KDWIDGETS_EXPORT KdWrapLabel : public QLabel
{
    Q_OBJECT

public:
    /**
     * @param text shown as it is, markup too.
     * @param widest the width in pixels from which on the text is broken.
     * @param mostLines from which on it ends in an ellipsis; 0: all.
     * @param parent owns the label; may be null.
     */
    KdWrapLabel(const QString& text, int widest, int mostLines, QWidget* parent = nullptr);
    ~KdWrapLabel() override;

    /** @return true. */
    bool hasHeightForWidth() const override { return true; }
    /**
     * @param width in pixels.
     * @return the height of the text in that width; one line at least.
     */
    int heightForWidth(int width) const override;
    /** @return what the text takes when it is broken at the widest. */
    QSize sizeHint() const override;
    /** @return room for some eight letters on one line. */
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QStringList lines(int width) const;

    int m_nWidest;
    int m_nMostLines;
};
