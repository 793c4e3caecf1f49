#include <Studio/StudioDevicesDialog.h>

#include <KdWidgets/KdLabel.h>
#include <Studio/StudioDevicePane.h>
#include <Studio/StudioDeviceSource.h>
#include <Studio/StudioPaint.h>
#include <Studio/StudioScrollPage.h>

#include <QVBoxLayout>

namespace {

constexpr int kWidth = 440;

} // namespace

StudioDevicesDialog::StudioDevicesDialog(QWidget* parent)
    : KdFramelessDialog(parent)
    , m_pSource(new StudioDeviceSource(this))
    , m_pBody(new QWidget(this))
    , m_pCameras(new StudioDevicePane(KdVBLMODEL::kdtWebcam, m_pSource, m_pBody))
    , m_pMicrophones(new StudioDevicePane(KdVBLMODEL::kdtMicrophone, m_pSource, m_pBody))
    , m_pNote(new KdLabel(m_pBody))
{
    setObjectName(QStringLiteral("StudioDevicesDialog"));
    setAttribute(Qt::WA_DeleteOnClose);
    setButtonBarVisible(false);
    layOut();
    StudioDevicesDialog::RetranslateUi();
}

void StudioDevicesDialog::layOut()
{
    m_pNote->setCaption(true);
    m_pNote->setWordWrap(true);
    // Some languages need one line only: the window keeps its height all the same.
    m_pNote->setAlignment(Qt::AlignTop | Qt::AlignLeft);
    m_pNote->setMinimumHeight(StudioPaint::twoLines(m_pNote->fontMetrics()));
    auto* const column = new QVBoxLayout(m_pBody);
    column->setContentsMargins(16, 12, 16, 16);
    column->setSpacing(16);
    column->addWidget(m_pCameras);
    column->addWidget(m_pMicrophones);
    column->addWidget(m_pNote);
    setContentWidget(new StudioScrollPage(m_pBody, kWidth, this));
}

void StudioDevicesDialog::RetranslateUi()
{
    SetTitleName(tr("Devices"));
    m_pNote->setText(
        tr("What is current here is for this window alone: each recorder keeps its own "
           "choice."));
}
