#include "KRecordPreViewSettingRadiusWidget.h"

#include <KdWidgets/KdLabel.h>
#include <KdWidgets/KdSkinManager.h>
#include <KdWidgets/KdToolButton.h>

#include <QBoxLayout>
#include <QPointer>
#include <QVariant>

#include <utility>

using namespace KdVBLMODEL;
using KdSkin::KdSkinManager;

namespace {

constexpr QSize kStripSize(193, 40);
constexpr QSize kButtonSize(28, 28);
constexpr QSize kSeparatorSize(1, 28);
constexpr int kMargin = 6;
constexpr int kSpacing = 8;

/** A button in a list is the chosen one when its index is the value of the choice. */
void showChoice(const QList<KdToolButton*>& buttons, int choice)
{
    for (int index = 0; index < buttons.size(); ++index) {
        KdSkinManager::setCheckState(buttons.at(index), index == choice);
    }
}

void showNoChoice(const QList<KdToolButton*>& buttons)
{
    for (KdToolButton* button : buttons) {
        button->setProperty("checkState", QVariant());
        KdSkinManager::repolish(button);
    }
}

/** @return whether a callback is set and accepts. Works on a copy, as the callback may set another
 * or destroy its owner. */
template <typename Handle, typename Value>
bool isAccepted(const Handle handle, Value value) // NOLINT(performance-unnecessary-value-param)
{
    return handle && handle(value);
}

} // namespace

KRecordPreViewSettingRadiusWidget::KRecordPreViewSettingRadiusWidget(
    QWidget* parent, _KdCaptureRecordShape shape, _KdCaptureRecordBackgroundMode mode, bool flip)
    : KdRoundRadiusWidget(parent), m_shape(shape), m_backgroundMode(mode), m_bFlip(flip)
{
    initUI();
    KRecordPreViewSettingRadiusWidget::RetranslateUi();
    initBtnList();
    initConnections();
}

KRecordPreViewSettingRadiusWidget::~KRecordPreViewSettingRadiusWidget() = default;

void KRecordPreViewSettingRadiusWidget::initUI()
{
    KdSkinManager::instance()->applyStyleSheet(
        this, QStringLiteral("ScreenRecorder/KRecordPreViewSettingRadiusWidget"), 0);
    setFixedSize(kStripSize);
    m_pBtnCircle = createButton(QStringLiteral("KRecorder_Circle_RoundBtn"));
    m_pBtnSquare = createButton(QStringLiteral("KRecorder_Square_RoundBtn"));
    m_pSeparator = new KdLabel(this);
    m_pSeparator->setObjectName(QStringLiteral("KInputLine"));
    KdSkinManager::instance()->applyStyleSheet(m_pSeparator, QStringLiteral("Widgets/KInputLine"),
                                               0);
    m_pSeparator->setFixedSize(kSeparatorSize);
    m_pBtnRemoval = createButton(QStringLiteral("KRecorder_Removal_RoundBtn"));
    m_pBtnBlurred = createButton(QStringLiteral("KRecorder_Blurred_RoundBtn"));
    m_pBtnMirror = createButton(QStringLiteral("KRecorder_Mirror_RoundBtn"));

    auto* const layout = new QHBoxLayout(this);
    layout->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    layout->setSpacing(kSpacing);
    const QList<QWidget*> inOrder{m_pBtnCircle,  m_pBtnSquare,  m_pSeparator,
                                  m_pBtnRemoval, m_pBtnBlurred, m_pBtnMirror};
    for (QWidget* widget : inOrder) {
        layout->addWidget(widget);
    }
}

KdToolButton* KRecordPreViewSettingRadiusWidget::createButton(const QString& name)
{
    KdToolButton* const button =
        KdToolButton::CreateToolButton(this, name, QStringLiteral("ScreenRecorder/") + name);
    button->setFixedSize(kButtonSize);
    return button;
}

void KRecordPreViewSettingRadiusWidget::RetranslateUi()
{
    m_pBtnSquare->setToolTip(tr("Switch to Square"));
    m_pBtnCircle->setToolTip(tr("Switch to Circle"));
    m_pBtnBlurred->setToolTip(tr("Blur Background"));
    m_pBtnRemoval->setToolTip(tr("Remove Background"));
    m_pBtnMirror->setToolTip(tr("Flip"));
    describeStates();
    KdRoundRadiusWidget::RetranslateUi();
}

void KRecordPreViewSettingRadiusWidget::initBtnList()
{
    m_shapeBtns = {m_pBtnCircle, m_pBtnSquare};
    m_backgroundBtns = {m_pBtnRemoval, m_pBtnBlurred};
}

void KRecordPreViewSettingRadiusWidget::initConnections()
{
    using Strip = KRecordPreViewSettingRadiusWidget;
    connect(m_pBtnSquare, &KdToolButton::clicked, this, &Strip::slotOnSquareClicked);
    connect(m_pBtnCircle, &KdToolButton::clicked, this, &Strip::slotOnCircleClicked);
    connect(m_pBtnRemoval, &KdToolButton::clicked, this, &Strip::slotOnRemovalClicked);
    connect(m_pBtnBlurred, &KdToolButton::clicked, this, &Strip::slotOnBlurredClicked);
    connect(m_pBtnMirror, &KdToolButton::clicked, this, &Strip::slotOnMirrorClicked);
}

void KRecordPreViewSettingRadiusWidget::setActionHandleForShapeChange(ShapeHandle handle)
{
    m_shapeHandle = std::move(handle);
}

void KRecordPreViewSettingRadiusWidget::setActionHandleForBackgroundChange(BackgroundHandle handle)
{
    m_backgroundHandle = std::move(handle);
}

void KRecordPreViewSettingRadiusWidget::setActionHandleForFlipChange(FlipHandle handle)
{
    m_flipHandle = std::move(handle);
}

void KRecordPreViewSettingRadiusWidget::setCurrentShape(_KdCaptureRecordShape shape)
{
    if (m_shape != shape) {
        m_shape = shape;
        updateShapeBtn();
    }
}

void KRecordPreViewSettingRadiusWidget::setFlip(bool flip)
{
    if (m_bFlip != flip) {
        m_bFlip = flip;
        updateMirrorBtn();
    }
}

void KRecordPreViewSettingRadiusWidget::useUserSettings()
{
    const bool isComplete = m_shapeHandle && m_backgroundHandle && m_flipHandle;
    Q_ASSERT_X(isComplete, "useUserSettings", "all three callbacks must be set");
    const QPointer<KRecordPreViewSettingRadiusWidget> self(this);
    if (isComplete) {
        isAccepted(m_shapeHandle, m_shape);
    }
    if (self && isComplete) {
        isAccepted(m_backgroundHandle, m_backgroundMode);
    }
    if (self && isComplete) {
        isAccepted(m_flipHandle, m_bFlip);
    }
    if (self && isComplete) {
        updateShapeBtn();
        updateBackgroundBtn();
        updateMirrorBtn();
    }
}

void KRecordPreViewSettingRadiusWidget::slotOnSquareClicked()
{
    chooseShape(fcrsSquare);
}

void KRecordPreViewSettingRadiusWidget::slotOnCircleClicked()
{
    chooseShape(fcrsCircle);
}

void KRecordPreViewSettingRadiusWidget::slotOnBlurredClicked()
{
    toggleBackground(fcbmBlur);
}

void KRecordPreViewSettingRadiusWidget::slotOnRemovalClicked()
{
    toggleBackground(fcbmRemove);
}

void KRecordPreViewSettingRadiusWidget::slotOnMirrorClicked()
{
    const QPointer<KRecordPreViewSettingRadiusWidget> self(this);
    m_bFlip = !m_bFlip;
    if (isAccepted(m_flipHandle, m_bFlip) && self) {
        updateMirrorBtn();
    }
}

void KRecordPreViewSettingRadiusWidget::chooseShape(_KdCaptureRecordShape shape)
{
    if (m_shape == shape) {
        return;
    }
    const QPointer<KRecordPreViewSettingRadiusWidget> self(this);
    m_shape = shape;
    if (isAccepted(m_shapeHandle, m_shape) && self) {
        updateShapeBtn();
    }
}

void KRecordPreViewSettingRadiusWidget::toggleBackground(_KdCaptureRecordBackgroundMode mode)
{
    const QPointer<KRecordPreViewSettingRadiusWidget> self(this);
    m_backgroundMode = m_backgroundMode == mode ? fcbmNone : mode;
    if (isAccepted(m_backgroundHandle, m_backgroundMode) && self) {
        updateBackgroundBtn();
    }
}

void KRecordPreViewSettingRadiusWidget::updateShapeBtn()
{
    showChoice(m_shapeBtns, m_shape);
    describeStates();
}

void KRecordPreViewSettingRadiusWidget::updateBackgroundBtn()
{
    if (m_backgroundMode == fcbmNone) {
        showNoChoice(m_backgroundBtns);
    } else {
        showChoice(m_backgroundBtns, m_backgroundMode);
    }
    describeStates();
}

void KRecordPreViewSettingRadiusWidget::updateMirrorBtn()
{
    KdSkinManager::setCheckState(m_pBtnMirror, m_bFlip);
    describeStates();
}

/** What the look tells, for those who do not see it. */
void KRecordPreViewSettingRadiusWidget::describeStates()
{
    for (KdToolButton* button :
         {m_pBtnCircle, m_pBtnSquare, m_pBtnRemoval, m_pBtnBlurred, m_pBtnMirror}) {
        const bool isChecked = button->property("checkState") == QStringLiteral("checked");
        button->setAccessibleDescription(isChecked ? tr("Selected") : QString());
    }
}
