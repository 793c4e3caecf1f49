#pragma once

#include <KdWidgets/KdWidget.h>

class KdLabel;
class KdPushButton;
class QListView;
class StudioTakeModel;

/** The left side of the window: the take list and the buttons that make new ones. */
class StudioTakePane : public KdWidget
{
    Q_OBJECT

public:
    /** @param model must outlive the widget */
    explicit StudioTakePane(StudioTakeModel* model, QWidget* parent = nullptr);

    /** @return the chosen row, -1 while nothing is chosen */
    int currentRow() const;
    void setCurrentRow(int row);
    void RetranslateUi() override;

Q_SIGNALS:
    void currentRowChanged(int row);
    void voiceOverRequested();
    void webcamRequested();
    /** The user does not want that row listed any longer. */
    void removeRequested(int row);
    /** Return or a double click on the chosen row. */
    void activated();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void layOut();
    void connectList();
    void showCount();
    void refreshIcon();

    StudioTakeModel* m_pModel;
    KdLabel* m_pCaption;
    KdLabel* m_pCount;
    QListView* m_pList;
    KdPushButton* m_pVoiceOver;
    KdPushButton* m_pWebcam;
    QAction* m_pRemove;
};
