#include "KdWebCamDisplayLabel.h"

#include "KRecordPreViewSettingRadiusWidget.h"
#include "KdPreviewStore.h"
#include "KdRecordAccessibility.h"

#include <KdWidgets/KdSkinManager.h>
#include <KdZentraCore/KdConfigEngine.h>

#include <QApplication>
#include <QBoxLayout>
#include <QFocusEvent>
#include <QPainter>
#include <QRegion>
#include <QTimer>
#include <QVariant>

#include <utility>

using namespace KdVBLMODEL;

namespace {

constexpr int kRenderDelayMs = 100;
constexpr int kStripDistance = 8; ///< from the lower edge
constexpr int kFocusRing = 2;

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
    KdRecordAccessibility::install();
    readConfiguration();
    initUI();
}

KdWebCamDisplayLabel::~KdWebCamDisplayLabel()
{
    // A widget that has the focus gives it up as it goes, when this object is a mere QWidget.
    qApp->disconnect(this);
}

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

    setFocusPolicy(Qt::TabFocus);
    connect(qApp, &QApplication::focusChanged, this,
            [this](QWidget* /*old*/, QWidget* now) { followFocus(now); });
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
    // Without the strip there is nothing here for the keyboard.
    setFocusPolicy(recording ? Qt::NoFocus : Qt::TabFocus);
    updateStrip();
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

void KdWebCamDisplayLabel::updateStrip()
{
    const bool isShown = (m_bMouseHere || m_bKeyboardHere) && !m_bRecording;
    if (!isShown && m_pStrip->isAncestorOf(QApplication::focusWidget())) {
        // Otherwise the focus would move on as if by the Tab key, and bring the strip back.
        setFocus(Qt::OtherFocusReason);
    }
    m_pStrip->setVisible(isShown);
}

void KdWebCamDisplayLabel::enterEvent(QEvent* event)
{
    QLabel::enterEvent(event);
    m_bMouseHere = true;
    updateStrip();
    Q_EMIT sigEnter();
}

void KdWebCamDisplayLabel::leaveEvent(QEvent* event)
{
    QLabel::leaveEvent(event);
    m_bMouseHere = false;
    updateStrip();
    Q_EMIT sigLeave();
}

/** Only for the Tab key: a window that comes up gives its focus to anything. */
void KdWebCamDisplayLabel::focusInEvent(QFocusEvent* event)
{
    QLabel::focusInEvent(event);
    if (event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason) {
        m_bKeyboardHere = true;
        updateStrip();
        update();
    }
}

void KdWebCamDisplayLabel::followFocus(const QWidget* focused)
{
    const bool isHere = focused && (focused == this || isAncestorOf(focused));
    if (m_bKeyboardHere && !isHere) {
        m_bKeyboardHere = false;
        updateStrip();
    }
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
    if (hasFocus() && m_bKeyboardHere) {
        paintFocus();
    }
}

void KdWebCamDisplayLabel::paintFocus()
{
    QPainter painter(this);
    painter.setPen(QPen(KdSkin::KdSkinManager::instance()->color(KdSkin::Accent), kFocusRing,
                        Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
    painter.drawRect(rect().adjusted(1, 1, -1, -1));
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
