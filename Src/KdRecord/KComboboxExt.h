#pragma once

#include <KdRecord/KdRecordExport.h>
#include <KdWidgets/KdWidget.h>

class KQuestionLabel;
class KdComboBox;
class KdLabel;
class KdTipWidget;
class QHBoxLayout;

/**
 * A row of a settings page: a title above a combo box, and on demand a question mark beside the
 * title that shows an explanation while the pointer is on it or on the explanation itself. GUI
 * thread.
 */
class KDRECORD_EXPORT KComboboxExt : public KdWidget
{
    Q_OBJECT

public:
    explicit KComboboxExt(QWidget* parent = nullptr);
    ~KComboboxExt() override;

    /** Never null, owned by the row. */
    KdComboBox* combobox() const { return m_pCombo; }
    void setTitle(const QString& title);
    /** The explanation, as plain text; taken when the tip is shown next. */
    void setQuestionTip(const QString& tip);
    /** Shows or hides the question mark. Each call with true adds its spacing to the title row
     * again. */
    void setQuestionVisible(bool visible);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void initUI();
    void filterQuestion(QEvent* event);
    void filterTip(QEvent* event);
    void onNeedShowTips(QPoint arrowTarget);
    void onNeedHideTips();

    KdLabel* m_pTitle = nullptr;
    KdComboBox* m_pCombo = nullptr;
    KQuestionLabel* m_pQuestion = nullptr;
    QHBoxLayout* m_pTitleLayout = nullptr;
    QString m_sTip;
    KdTipWidget* m_pTip = nullptr;
    bool m_bMouseInTip = false;
};
