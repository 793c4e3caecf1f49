#include <Studio/StudioRecoveryBar.h>

#include <KdWidgets/KdPopovers.h>
#include <KdWidgets/KdPushButton.h>
#include <KdWidgets/KdSkinManager.h>
#include <Studio/StudioRecovery.h>

#include <QFileInfo>
#include <QHBoxLayout>
#include <QLocale>
#include <QPointer>
#include <QProgressBar>

namespace {

using Reason = RepairResult::Reason;

QString describe(Reason reason)
{
    switch (reason) {
    case Reason::Busy:
        return StudioRecoveryBar::tr(
            "Its folder is not writable, or another program is working on it.");
    case Reason::Settled:
        return StudioRecoveryBar::tr("It is not unfinished any more.");
    case Reason::CannotOpen:
        return StudioRecoveryBar::tr("The file cannot be opened.");
    case Reason::Foreign:
        return StudioRecoveryBar::tr("The file was not written by this program.");
    case Reason::NoSpace:
        return StudioRecoveryBar::tr("There is not enough space on the disk.");
    case Reason::DiskError:
        return StudioRecoveryBar::tr("The disk refuses the change.");
    case Reason::Damaged:
        return StudioRecoveryBar::tr("The file is damaged and is left as it is.");
    case Reason::CannotRemove:
        return StudioRecoveryBar::tr("It is empty and cannot be removed.");
    case Reason::None:
        break;
    }
    return StudioRecoveryBar::tr("It was interrupted.");
}

} // namespace

StudioRecoveryBar::StudioRecoveryBar(StudioRecovery* recovery, QWidget* parent)
    : StudioNoticeBar(QStringLiteral("warning"), KdSkin::Warn, parent)
    , m_pRecovery(recovery)
    , m_pProgress(new QProgressBar(this))
    , m_pRepair(KdPushButton::CreatePrimaryButton(this))
    , m_pDiscard(KdPushButton::CreateSecondaryButton(this))
    , m_pLater(KdPushButton::CreateSecondaryButton(this))
{
    setObjectName(QStringLiteral("Studio_RecoveryBar"));
    layOut();
    connect(m_pRepair, &QPushButton::clicked, this, &StudioRecoveryBar::repair);
    connect(m_pDiscard, &QPushButton::clicked, this, &StudioRecoveryBar::askToDiscard);
    connect(m_pLater, &QPushButton::clicked, this, &StudioRecoveryBar::putOff);
    connect(recovery, &StudioRecovery::found, this, &StudioRecoveryBar::offer);
    connect(recovery, &StudioRecovery::progress, m_pProgress, &QProgressBar::setValue);
    connect(recovery, &StudioRecovery::repaired, this, &StudioRecoveryBar::handleRepaired);
    connect(recovery, &StudioRecovery::discarded, this, &StudioRecoveryBar::handleDiscarded);
    StudioRecoveryBar::RetranslateUi();
    hide();
}

void StudioRecoveryBar::layOut()
{
    m_pRepair->setObjectName(QStringLiteral("Studio_RecoveryRepair"));
    m_pDiscard->setObjectName(QStringLiteral("Studio_RecoveryDiscard"));
    m_pLater->setObjectName(QStringLiteral("Studio_RecoveryLater"));
    m_pProgress->setFixedWidth(120);
    m_pProgress->setTextVisible(false);
    controls()->addWidget(m_pProgress);
    controls()->addWidget(m_pRepair);
    controls()->addWidget(m_pDiscard);
    controls()->addWidget(m_pLater);
    setBusy(false);
}

void StudioRecoveryBar::RetranslateUi()
{
    m_pRepair->setText(tr("Repair"));
    m_pDiscard->setText(tr("Discard"));
    m_pLater->setText(tr("Later"));
    m_pProgress->setAccessibleName(tr("Repair"));
    showTexts();
}

void StudioRecoveryBar::showTexts()
{
    if (m_takes.isEmpty()) {
        return;
    }
    const QString heading =
        m_takes.size() == 1 ? tr("An unfinished recording was found")
                            : tr("%n unfinished recordings were found", nullptr, m_takes.size());
    const UnfinishedTake& take = m_takes.constFirst();
    const QString when =
        QLocale().toString(take.record.started.toLocalTime(), QLocale::ShortFormat);
    const QString name = QFileInfo(take.record.takePath).fileName();
    const QString failure = m_failure.now();
    setTexts(heading,
             failure.isEmpty()
                 ? tr("%1, begun %2. It can be repaired and added to the takes.").arg(name, when)
                 : tr("%1 could not be dealt with. %2").arg(name, failure));
}

void StudioRecoveryBar::offer(const QVector<UnfinishedTake>& takes)
{
    m_takes = takes;
    m_failure = {};
    setBusy(false);
    showTexts();
    setVisible(!m_takes.isEmpty());
}

void StudioRecoveryBar::setBusy(bool busy)
{
    m_pProgress->setValue(0);
    m_pProgress->setVisible(busy);
    m_pRepair->setEnabled(!busy);
    m_pDiscard->setEnabled(!busy);
    m_pLater->setEnabled(!busy);
}

void StudioRecoveryBar::repair()
{
    if (!m_takes.isEmpty()) {
        setBusy(true);
        m_pRecovery->repair(m_takes.constFirst());
    }
}

void StudioRecoveryBar::askToDiscard()
{
    const KdPopovers::ConfirmTexts texts{
        [] { return tr("Discarding deletes what was recorded. Are you sure?"); },
        [] { return tr("Cancel"); }, [] { return tr("Discard"); }};
    const QPointer<StudioRecoveryBar> guard(this);
    KdPopovers::showConfirm(m_pDiscard, texts, [guard](bool confirmed) {
        if (guard && confirmed && !guard->m_takes.isEmpty()) {
            guard->setBusy(true);
            guard->m_pRecovery->discard(guard->m_takes.constFirst());
        }
    });
}

void StudioRecoveryBar::putOff()
{
    m_takes.clear();
    hide();
    Q_EMIT message([] {
        return tr(
            "The unfinished recording stays as it is and is offered again at the next start.");
    });
}

void StudioRecoveryBar::handleRepaired(const UnfinishedTake& take, const RepairResult& result)
{
    const QString name = QFileInfo(take.record.takePath).fileName();
    switch (result.outcome) {
    case RepairResult::Outcome::Repaired:
        next();
        Q_EMIT message([name] { return tr("%1 was repaired.").arg(name); });
        Q_EMIT recovered(take.record.takePath, result.durationMs);
        return;
    case RepairResult::Outcome::NothingRecoverable:
        next();
        Q_EMIT message([name] { return tr("Nothing had been recorded in %1 yet.").arg(name); });
        return;
    case RepairResult::Outcome::Cancelled:
    case RepairResult::Outcome::Failed:
        m_failure = [reason = result.reason] { return describe(reason); };
        setBusy(false);
        showTexts();
        return;
    }
}

void StudioRecoveryBar::handleDiscarded(const UnfinishedTake& take, bool done)
{
    if (!done) {
        m_failure = [] { return tr("It could not be deleted."); };
        setBusy(false);
        showTexts();
        return;
    }
    next();
    Q_EMIT message([name = QFileInfo(take.record.takePath).fileName()] {
        return tr("%1 was discarded.").arg(name);
    });
}

void StudioRecoveryBar::next()
{
    if (!m_takes.isEmpty()) {
        m_takes.removeFirst();
    }
    m_failure = {};
    setBusy(false);
    showTexts();
    setVisible(!m_takes.isEmpty());
}
