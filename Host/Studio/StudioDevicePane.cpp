#include <Studio/StudioDevicePane.h>

#include <KdWidgets/KdLabel.h>
#include <KdWidgets/KdSkinManager.h>
#include <KdWidgets/KdText.h>
#include <Studio/StudioDeviceRows.h>
#include <Studio/StudioDeviceSource.h>
#include <Studio/StudioPaint.h>

#include <QAccessible>
#include <QListWidget>
#include <QSignalBlocker>
#include <QVBoxLayout>

using namespace KdVBLMODEL;

namespace {

constexpr int kListHeight = 132;
constexpr int kIconSize = 16;

QIcon iconOf(StudioDeviceRow::State state)
{
    switch (state) {
    case StudioDeviceRow::Current:
        return StudioPaint::icon(QStringLiteral("check"), KdSkin::Accent);
    case StudioDeviceRow::Lost:
        return StudioPaint::icon(QStringLiteral("warning"), KdSkin::Warn);
    case StudioDeviceRow::Listed:
        break;
    }
    // As wide as the others, so that the names stand in one line.
    QPixmap nothing(kIconSize, kIconSize);
    nothing.fill(Qt::transparent);
    return QIcon(nothing);
}

} // namespace

StudioDevicePane::StudioDevicePane(_KdDevType type, StudioDeviceSource* source, QWidget* parent)
    : KdWidget(parent)
    , m_connector(type)
    , m_pCaption(new KdLabel(this))
    , m_pList(new QListWidget(this))
    , m_pMessage(new KdLabel(this))
{
    layOut();
    connectSource(source);
    connectList();
    m_connector.refreshDeviceList();
    connect(KdSkin::KdSkinManager::instance(), &KdSkin::KdSkinManager::skinChanged, this,
            &StudioDevicePane::showDevices);
    StudioDevicePane::RetranslateUi();
}

void StudioDevicePane::layOut()
{
    setObjectName(isForCameras() ? QStringLiteral("Studio_Cameras")
                                 : QStringLiteral("Studio_Microphones"));
    m_pCaption->setProperty("studioHeading", true);
    m_pList->setIconSize(QSize(kIconSize, kIconSize));
    m_pList->setObjectName(objectName() + QStringLiteral("_List"));
    m_pList->setProperty("studioDevices", true);
    m_pList->setFixedHeight(kListHeight);
    m_pList->setTextElideMode(Qt::ElideRight);
    m_pList->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_pMessage->setObjectName(objectName() + QStringLiteral("_Message"));
    m_pMessage->setCaption(true);
    // A name from outside may be long; room for two lines, so that nothing moves with the news.
    m_pMessage->setWordWrap(true);
    m_pMessage->setAlignment(Qt::AlignTop | Qt::AlignLeft);
    m_pMessage->setMinimumHeight(StudioPaint::twoLines(m_pMessage->fontMetrics()));
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(8);
    column->addWidget(m_pCaption);
    column->addWidget(m_pList);
    column->addWidget(m_pMessage);
}

void StudioDevicePane::connectSource(StudioDeviceSource* source)
{
    m_connector.registerRefreshDeviceList(
        [source](_KdDevType type) { return source->devices(type); });
    m_connector.registerSwitchDevice(
        [source](const _KdCaptureDevInf& device) { return source->select(device); });
    connect(source, &StudioDeviceSource::deviceStatusChanged, this, [this](int status, int index) {
        m_connector.processDeviceStatusChangeEvent(static_cast<_KdCaptureDeviceStatus>(status),
                                                   index);
    });
    using Connector = KdRecordDeviceConnector;
    connect(&m_connector, &Connector::sigDeviceListRefreshed, this,
            &StudioDevicePane::noteRefreshed);
    connect(&m_connector, &Connector::sigDeviceOccupied, this,
            [this] { tell(Happening::Occupied); });
}

void StudioDevicePane::connectList()
{
    const auto chooseItem = [this](const QListWidgetItem* item) { choose(m_pList->row(item)); };
    connect(m_pList, &QListWidget::itemClicked, this, chooseItem);
    connect(m_pList, &QListWidget::itemActivated, this, chooseItem);
}

// The current device is one of those that come and go, so that nothing is told twice.
void StudioDevicePane::noteRefreshed()
{
    const QList<_KdCaptureDevInf>& devices = m_connector.allDevices();
    const _KdCaptureDevInf gone = StudioDeviceRows::firstMissing(devices, m_shown);
    const _KdCaptureDevInf come = StudioDeviceRows::firstMissing(m_shown, devices);
    m_shown = devices;
    if (m_connector.currentDevice().devType == kdtNone) {
        chooseFirst();
    } else if (gone.devType != kdtNone) {
        tell(Happening::Disconnected, gone.name);
    } else if (come.devType != kdtNone) {
        tell(Happening::Connected, come.name);
    }
    showDevices();
}

/** Until somebody chooses, as the recorders do. */
void StudioDevicePane::chooseFirst()
{
    if (!m_connector.allDevices().isEmpty()) {
        m_connector.switchDevice(0);
    }
}

void StudioDevicePane::choose(int row)
{
    // The last row may be that of a lost device, which is no more in the list.
    if (m_connector.switchDevice(row)) {
        tell(Happening::None);
        showDevices();
    }
}

void StudioDevicePane::tell(Happening happening, const QString& device)
{
    m_happening = happening;
    m_happenedTo = KdText::singleLine(device);
    showMessage();
    if (happening != Happening::None) {
        QAccessibleEvent event(m_pMessage, QAccessible::Alert);
        QAccessible::updateAccessibility(&event);
    }
}

void StudioDevicePane::showDevices()
{
    const QSignalBlocker blocker(m_pList);
    const int row = m_pList->currentRow();
    m_pList->clear();
    const QVector<StudioDeviceRow> rows =
        StudioDeviceRows::of(m_connector.allDevices(), m_connector.currentDevice());
    for (const StudioDeviceRow& device : rows) {
        auto* const item = new QListWidgetItem(iconOf(device.state), rowText(device), m_pList);
        item->setToolTip(KdText::toolTip(item->text()));
    }
    m_pList->setCurrentRow(qMin(row, m_pList->count() - 1));
    showMessage();
}

QString StudioDevicePane::rowText(const StudioDeviceRow& row) const
{
    switch (row.state) {
    case StudioDeviceRow::Current:
        return tr("%1 (current)").arg(row.name);
    case StudioDeviceRow::Lost:
        return tr("%1 (disconnected)").arg(row.name);
    case StudioDeviceRow::Listed:
        break;
    }
    return row.name;
}

void StudioDevicePane::showMessage()
{
    m_pMessage->setText(messageText());
}

QString StudioDevicePane::messageText() const
{
    switch (m_happening) {
    case Happening::Connected:
        return tr("%1 was connected.").arg(m_happenedTo);
    case Happening::Disconnected:
        return tr("%1 was disconnected.").arg(m_happenedTo);
    case Happening::Occupied:
        return tr("Another program is using the camera.");
    case Happening::None:
        break;
    }
    if (!m_connector.allDevices().isEmpty()) {
        return tr("Press one to make it the current one.");
    }
    return isForCameras() ? tr("Connect a camera: it appears here by itself.")
                          : tr("Connect a microphone: it appears here by itself.");
}

void StudioDevicePane::RetranslateUi()
{
    m_pCaption->setText(isForCameras() ? tr("Cameras") : tr("Microphones"));
    m_pList->setAccessibleName(m_pCaption->text());
    showDevices();
}
