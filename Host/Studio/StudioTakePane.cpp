#include <Studio/StudioTakePane.h>

#include <KdWidgets/KdLabel.h>
#include <KdWidgets/KdPushButton.h>
#include <KdWidgets/KdSkinManager.h>
#include <Studio/StudioPaint.h>
#include <Studio/StudioTakeDelegate.h>
#include <Studio/StudioTakeModel.h>

#include <QAction>
#include <QEvent>
#include <QHBoxLayout>
#include <QListView>
#include <QPainter>
#include <QVBoxLayout>

namespace {

constexpr int kWidth = 352;

QString emptyText()
{
    return StudioTakePane::tr("Takes that you record are listed here.");
}

} // namespace

StudioTakePane::StudioTakePane(StudioTakeModel* model, QWidget* parent)
    : KdWidget(parent)
    , m_pModel(model)
    , m_pCaption(new KdLabel(this))
    , m_pCount(new KdLabel(this))
    , m_pList(new QListView(this))
    , m_pVoiceOver(KdPushButton::CreatePrimaryButton(this, QString(), KdPushButton::Size32))
    , m_pWebcam(KdPushButton::CreatePrimaryButton(this, QString(), KdPushButton::Size32))
    , m_pRemove(new QAction(this))
{
    setObjectName(QStringLiteral("Studio_TakePane"));
    setAttribute(Qt::WA_StyledBackground);
    layOut();
    connectList();
    refreshIcon();
    connect(KdSkin::KdSkinManager::instance(), &KdSkin::KdSkinManager::skinChanged, this,
            &StudioTakePane::refreshIcon);
    StudioTakePane::RetranslateUi();
}

void StudioTakePane::layOut()
{
    setFixedWidth(kWidth);
    m_pCaption->setProperty("studioHeading", true);
    m_pCount->setCaption(true);
    m_pList->setObjectName(QStringLiteral("Studio_TakeList"));
    m_pList->setModel(m_pModel);
    m_pList->setItemDelegate(new StudioTakeDelegate(m_pList));
    m_pList->setMouseTracking(true);
    m_pList->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    m_pList->viewport()->installEventFilter(this);
    m_pVoiceOver->setObjectName(QStringLiteral("Studio_RecordVoiceOver"));
    m_pWebcam->setObjectName(QStringLiteral("Studio_RecordWebcam"));
    auto* const captions = new QHBoxLayout;
    captions->setContentsMargins(16, 12, 16, 8);
    captions->addWidget(m_pCaption, 1);
    captions->addWidget(m_pCount);
    auto* const buttons = new QVBoxLayout;
    buttons->setContentsMargins(16, 12, 16, 16);
    buttons->setSpacing(8);
    buttons->addWidget(m_pVoiceOver);
    buttons->addWidget(m_pWebcam);
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addLayout(captions);
    column->addWidget(m_pList, 1);
    column->addLayout(buttons);
}

void StudioTakePane::connectList()
{
    connect(m_pList->selectionModel(), &QItemSelectionModel::currentChanged, this,
            [this](const QModelIndex& current) { Q_EMIT currentRowChanged(current.row()); });
    connect(m_pList, &QListView::activated, this, &StudioTakePane::activated);
    connect(m_pVoiceOver, &QPushButton::clicked, this, &StudioTakePane::voiceOverRequested);
    connect(m_pWebcam, &QPushButton::clicked, this, &StudioTakePane::webcamRequested);
    for (const auto change :
         {&QAbstractItemModel::rowsInserted, &QAbstractItemModel::rowsRemoved}) {
        connect(m_pModel, change, this, &StudioTakePane::showCount);
    }
    connect(m_pModel, &QAbstractItemModel::modelReset, this, &StudioTakePane::showCount);
    m_pRemove->setShortcut(QKeySequence::Delete);
    m_pRemove->setShortcutContext(Qt::WidgetShortcut);
    m_pList->addAction(m_pRemove);
    m_pList->setContextMenuPolicy(Qt::ActionsContextMenu);
    connect(m_pRemove, &QAction::triggered, this, [this] {
        if (currentRow() >= 0) {
            Q_EMIT removeRequested(currentRow());
        }
    });
}

int StudioTakePane::currentRow() const
{
    return m_pList->currentIndex().row();
}

void StudioTakePane::setCurrentRow(int row)
{
    m_pList->setCurrentIndex(m_pModel->index(row));
}

void StudioTakePane::RetranslateUi()
{
    m_pCaption->setText(tr("Takes"));
    m_pVoiceOver->setText(tr("Record voice-over"));
    m_pWebcam->setText(tr("Record webcam"));
    m_pRemove->setText(tr("Remove from list"));
    m_pList->setAccessibleName(m_pCaption->text());
    showCount();
}

void StudioTakePane::refreshIcon()
{
    m_pVoiceOver->setIcon(StudioPaint::icon(QStringLiteral("microphone"), KdSkin::OnAccent));
    m_pWebcam->setIcon(StudioPaint::icon(QStringLiteral("camera"), KdSkin::OnAccent));
}

void StudioTakePane::showCount()
{
    const int count = m_pModel->rowCount();
    m_pCount->setText(count == 0 ? QString() : QString::number(count));
    m_pRemove->setEnabled(count > 0);
    m_pList->setAccessibleDescription(count == 0 ? emptyText() : QString());
    m_pList->viewport()->update();
}

bool StudioTakePane::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_pList->viewport() && event->type() == QEvent::Paint &&
        m_pModel->rowCount() == 0) {
        QPainter painter(m_pList->viewport());
        painter.setPen(StudioPaint::skin(KdSkin::TextQuiet));
        painter.drawText(m_pList->viewport()->rect().adjusted(24, 0, -24, -48),
                         Qt::AlignCenter | Qt::TextWordWrap, emptyText());
        return true;
    }
    return KdWidget::eventFilter(watched, event);
}
