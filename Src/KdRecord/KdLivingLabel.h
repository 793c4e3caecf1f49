#pragma once

#include <KdWidgets/KdLabel.h>

class QTimer;

/**
 * A status that shows it is alive: up to three dots grow behind its text, one every half second,
 * and begin anew. It asks for the room of all three, so that nothing beside it moves; assistive
 * technology is told the text alone. GUI thread.
 */
class KdLivingLabel : public KdLabel
{
    Q_OBJECT

public:
    explicit KdLivingLabel(QWidget* parent = nullptr);
    ~KdLivingLabel() override;

    /** Shows text without dots; the first follows half a second later. Call it on this class: a
     * text set through a base class has gone at the next dot. */
    void setText(const QString& text);

    QSize sizeHint() const override;

private:
    void grow();
    int dots() const;

    QString m_sBaseText;
    QTimer* m_pTimer = nullptr;
};
