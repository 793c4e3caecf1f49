#pragma once

#include <KdRecord/KdRecordExport.h>

#include <QLabel>

/** A question mark as large as the label. GUI thread. */
class KDRECORD_EXPORT KQuestionLabel : public QLabel
{
    Q_OBJECT

public:
    /** @param parent owns the label; may be null. */
    explicit KQuestionLabel(QWidget* parent = nullptr);
    ~KQuestionLabel() override;

protected:
    void paintEvent(QPaintEvent* event) override;
};
