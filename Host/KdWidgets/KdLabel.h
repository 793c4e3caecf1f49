#pragma once

#include <KdWidgets/KdToolTipInterface.h>

#include <QLabel>

/**
 * A label that shows plain text on one line, or on several with word wrap. One line is elided where
 * it does not fit, with the whole text as a tool tip then.
 */
class KDWIDGETS_EXPORT KdLabel : public QLabel, public KdToolTipInterface
{
    Q_OBJECT

public:
    explicit KdLabel(QWidget* parent = nullptr);
    explicit KdLabel(const QString& text, QWidget* parent = nullptr);
    ~KdLabel() override;

    /** Captions are drawn in the quiet text colour. */
    void setCaption(bool caption);

    QString overflowText() const override;
    /** Never wider than a dialog, whatever the text. */
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    QSize onOneLine(const QSize& hint, int widest) const;
};
