#pragma once

#include <KdRecord/KdRecordDeviceConnector.h>
#include <KdWidgets/KdWidget.h>

class KdLabel;
class QListWidget;
class StudioDeviceSource;
struct StudioDeviceRow;

/**
 * The cameras or the microphones of this machine while they come and go, through a connector: the
 * current one is marked, a press or Return makes another one current, and a line below says what
 * has happened. GUI thread.
 */
class StudioDevicePane : public KdWidget
{
    Q_OBJECT

public:
    /** @param type webcams or microphones @param source must outlive all that the pane is asked */
    StudioDevicePane(KdVBLMODEL::_KdDevType type, StudioDeviceSource* source,
                     QWidget* parent = nullptr);

    const KdRecordDeviceConnector& connector() const { return m_connector; }
    void RetranslateUi() override;

private:
    enum class Happening
    {
        None,
        Connected,
        Disconnected,
        Occupied
    };

    bool isForCameras() const { return m_connector.deviceType() == KdVBLMODEL::kdtWebcam; }
    void layOut();
    void connectSource(StudioDeviceSource* source);
    void connectList();
    void chooseFirst();
    void choose(int row);
    void noteRefreshed();
    void tell(Happening happening, const QString& device = QString());
    void showDevices();
    void showMessage();
    QString rowText(const StudioDeviceRow& row) const;
    QString messageText() const;

    KdRecordDeviceConnector m_connector;
    QList<KdVBLMODEL::_KdCaptureDevInf> m_shown;
    Happening m_happening = Happening::None;
    QString m_happenedTo;
    KdLabel* m_pCaption;
    QListWidget* m_pList;
    KdLabel* m_pMessage;
};
