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
    /**
     * A row without title, items and question mark.
     * @param parent owns the row; may be null.
     */
    explicit KComboboxExt(QWidget* parent = nullptr);
    ~KComboboxExt() override;

    /** @return the combo box; never null, the row's own. */
    KdComboBox* combobox() const { return m_pCombo; }
    /** @param title above the combo box, and its name for assistive tools. */
    void setTitle(const QString& title);
    /**
     * @param tip the explanation, as plain text; taken when it is shown next or the language
     * changes. Assistive tools find it at the combo box.
     */
    void setQuestionTip(const QString& tip);
    /**
     * Shows or hides the question mark. Each call with true adds its spacing to the title row
     * again.
     * @param visible whether it is there; it is not at first.
     */
    void setQuestionVisible(bool visible);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void initUI();
    void describeQuestion();
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
