#include "KdWebCamDisplayLabel.h"

#include "KRecordPreViewSettingRadiusWidget.h"
#include "KdPreviewStore.h"

#include <KdWidgets/KdSkinManager.h>
#include <KdZentraCore/KdConfigEngine.h>

#include <QBoxLayout>
#include <QEvent>
#include <QPainter>
#include <QRegion>
#include <QTimer>
#include <QVariant>

#include <utility>

using namespace KdVBLMODEL;

namespace {

constexpr int kRenderDelayMs = 100;
constexpr int kStripDistance = 8; ///< from the lower edge

QVariant configured(const char* key, const QVariant& fallback)
{
    constexpr int userScope = 1;
    return KdConfigEngine::instance()->value(userScope, QStringLiteral("WebCamFuncConfig"),
                                             QLatin1String(key), fallback);
}

/** For each pixel of the widget. The screen's ratio, unless the widget is painted onto something
 * else. */
double devicePixels(const QPainter& painter)
{
    const double scale = painter.deviceTransform().m11();
    return scale > 0 ? scale : painter.device()->devicePixelRatioF();
}

} // namespace

KdWebCamDisplayLabel::KdWebCamDisplayLabel(QWidget* parent)
    : QLabel(parent), m_pStore(std::make_unique<KdPreviewStore>())
{
    KdSkin::KdSkinManager::instance()->applyStyleSheet(
        this, QStringLiteral("Record/KdWebCamDisplayLabel"), 0);
    setAttribute(Qt::WA_TranslucentBackground);
    readConfiguration();
    initUI();
}

KdWebCamDisplayLabel::~KdWebCamDisplayLabel() = default;

void KdWebCamDisplayLabel::readConfiguration()
{
    m_shape = _KdCaptureRecordShape(configured("WebCamFuncShape", fcrsSquare).toInt());
    m_bFlipped = configured("WebCamFuncFlip", false).toBool();
    m_backgroundMode =
        _KdCaptureRecordBackgroundMode(configured("WebCamFuncBackground", fcbmNone).toInt());
}

void KdWebCamDisplayLabel::initUI()
{
    m_pRenderDelay = new QTimer(this);
    m_pRenderDelay->setSingleShot(true);
    m_pRenderDelay->setInterval(kRenderDelayMs);
    connect(m_pRenderDelay, &QTimer::timeout, this, &KdWebCamDisplayLabel::startRender);

    m_pStrip = new KRecordPreViewSettingRadiusWidget(this, m_shape, m_backgroundMode, m_bFlipped);
    m_pStrip->hide();
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, kStripDistance);
    layout->setSpacing(0);
    layout->addWidget(m_pStrip, 0, Qt::AlignBottom | Qt::AlignHCenter);
}

void KdWebCamDisplayLabel::WebcamFrameChanged(int width, int height, uint8_t* bits)
{
    const bool isKept = m_pStore->put({bits, width, height});
    // One repaint shows whatever has come until then, also when the GUI thread is busy for long.
    if (isKept && !m_bRepaintPosted.exchange(true)) {
        QMetaObject::invokeMethod(this, "slotRepaint", Qt::QueuedConnection);
    }
}

void KdWebCamDisplayLabel::slotRepaint()
{
    m_bRepaintPosted = false;
    update();
}

void KdWebCamDisplayLabel::startRender()
{
    m_pRenderDelay->stop();
    m_pStore->setRendering(true);
}

void KdWebCamDisplayLabel::startRenderDelay()
{
    if (!m_pRenderDelay->isActive()) {
        m_pRenderDelay->start();
    }
}

void KdWebCamDisplayLabel::stopRender()
{
    m_pRenderDelay->stop();
    m_pStore->setRendering(false);
    m_pStore->clear();
    update();
}

bool KdWebCamDisplayLabel::isRendering() const
{
    return m_pStore->isRendering();
}

qint64 KdWebCamDisplayLabel::bufferSize() const
{
    return m_pStore->bufferSize();
}

std::mutex& KdWebCamDisplayLabel::frameLock() const
{
    return m_pStore->lock();
}

void KdWebCamDisplayLabel::setShape(_KdCaptureRecordShape shape)
{
    m_shape = shape;
    m_pStrip->setCurrentShape(shape);
    update();
}

void KdWebCamDisplayLabel::setBackgroundMode(_KdCaptureRecordBackgroundMode mode)
{
    m_backgroundMode = mode;
    update();
}

void KdWebCamDisplayLabel::setFlipped(bool flipped)
{
    m_bFlipped = flipped;
    update();
}

void KdWebCamDisplayLabel::setLayerCorner(float radius, bool flag)
{
    m_fCornerRadius = radius;
    m_bCorner = flag;
    update();
}

void KdWebCamDisplayLabel::setRecording(bool recording)
{
    m_bRecording = recording;
    showStrip(underMouse());
    update();
}

void KdWebCamDisplayLabel::setActionHandleForShapeChange(
    std::function<bool(_KdCaptureRecordShape)> handle)
{
    m_pStrip->setActionHandleForShapeChange(std::move(handle));
}

void KdWebCamDisplayLabel::setActionHandleForBackgroundChange(
    std::function<bool(_KdCaptureRecordBackgroundMode)> handle)
{
    m_pStrip->setActionHandleForBackgroundChange(std::move(handle));
}

void KdWebCamDisplayLabel::setActionHandleForFlipChange(std::function<bool(bool)> handle)
{
    m_pStrip->setActionHandleForFlipChange(std::move(handle));
}

void KdWebCamDisplayLabel::useUserSettings()
{
    m_pStrip->useUserSettings();
    update();
}

void KdWebCamDisplayLabel::showStrip(bool isMouseHere)
{
    m_pStrip->setVisible(isMouseHere && !m_bRecording);
}

void KdWebCamDisplayLabel::enterEvent(QEvent* event)
{
    QLabel::enterEvent(event);
    showStrip(true);
    Q_EMIT sigEnter();
}

void KdWebCamDisplayLabel::leaveEvent(QEvent* event)
{
    QLabel::leaveEvent(event);
    showStrip(false);
    Q_EMIT sigLeave();
}

void KdWebCamDisplayLabel::hideEvent(QHideEvent* event)
{
    m_pStore->rest();
    QLabel::hideEvent(event);
}

void KdWebCamDisplayLabel::paintEvent(QPaintEvent* event)
{
    if (!paintFrame()) {
        QPainter(this).fillRect(rect(), Qt::black);
    }
    QLabel::paintEvent(event);
}

/** @return false when there is no frame to paint. */
bool KdWebCamDisplayLabel::paintFrame()
{
    QPainter painter(this);
    const double ratio = devicePixels(painter);
    const KdPreviewPicture* const picture =
        m_pStore->picture({size(), ratio, m_shape == fcrsCircle, m_bFlipped});
    if (!picture) {
        return false;
    }
    // In pixels of the screen, so that the picture is copied as it is.
    painter.scale(1 / ratio, 1 / ratio);
    const QRect all(QPoint(), (QSizeF(size()) * ratio).toSize() + QSize(1, 1));
    const QRegion bars = QRegion(all) - QRect(picture->place, picture->image.size());
    for (const QRect& bar : bars) {
        painter.fillRect(bar, Qt::black);
    }
    painter.drawImage(picture->place, picture->image);
    return true;
}
