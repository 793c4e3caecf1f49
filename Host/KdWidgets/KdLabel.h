#pragma once

#include <KdWidgets/KdToolTipInterface.h>

#include <QLabel>

/**
 * A label that shows plain text on one line, or on several with word wrap. One line is elided where
 * it does not fit, with the whole text as a tool tip then. GUI thread.
 */
class KDWIDGETS_EXPORT KdLabel : public QLabel, public KdToolTipInterface
{
    Q_OBJECT

public:
    /**
     * An empty label.
     * @param parent owns the label; may be null.
     */
    explicit KdLabel(QWidget* parent = nullptr);
    /**
     * @param text shown as it is, markup too.
     * @param parent owns the label; may be null.
     */
    explicit KdLabel(const QString& text, QWidget* parent = nullptr);
    ~KdLabel() override;

    /** @param caption true: drawn in the quiet text colour, as captions are. */
    void setCaption(bool caption);

    QString overflowText() const override;
    /** @return never wider than a dialog, whatever the text. */
    QSize sizeHint() const override;
    /** @return room for an ellipsis; of a wrapped label, as of its base. */
    QSize minimumSizeHint() const override;

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    QSize onOneLine(const QSize& hint, int widest) const;
};
