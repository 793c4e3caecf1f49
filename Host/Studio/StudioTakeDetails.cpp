#include <Studio/StudioTakeDetails.h>

#include <KdWidgets/KdLabel.h>
#include <Studio/StudioMediaProbe.h>
#include <Studio/StudioPictureView.h>
#include <Studio/StudioPlayer.h>
#include <Studio/StudioTransport.h>
#include <Studio/StudioWaveformView.h>

#include <QDir>
#include <QFontDatabase>
#include <QLocale>
#include <QPlainTextEdit>
#include <QVBoxLayout>

namespace {

/** Little, since it scrolls: with a clip all of the window still fits 600 pixels. */
constexpr int kLeastReportHeight = 48;

} // namespace

StudioTakeDetails::StudioTakeDetails(StudioPlayer* player, QWidget* parent)
    : KdWidget(parent)
    , m_pPlayer(player)
    , m_pName(new KdLabel(this))
    , m_pOrigin(new KdLabel(this))
    , m_pPicture(new StudioPictureView(this))
    , m_pWaveform(new StudioWaveformView(this))
    , m_pTransport(new StudioTransport(player, this))
    , m_pReportCaption(new KdLabel(this))
    , m_pReport(new QPlainTextEdit(this))
{
    layOut();
    connect(player, &StudioPlayer::positionChanged, m_pWaveform, &StudioWaveformView::setPosition);
    connect(player, &StudioPlayer::pictureChanged, m_pPicture, &StudioPictureView::setPicture);
    connect(m_pWaveform, &StudioWaveformView::seekRequested, player, &StudioPlayer::seek);
    StudioTakeDetails::RetranslateUi();
}

void StudioTakeDetails::layOut()
{
    m_pName->setObjectName(QStringLiteral("Studio_TakeName"));
    m_pOrigin->setCaption(true);
    m_pOrigin->setObjectName(QStringLiteral("Studio_TakeOrigin"));
    m_pReportCaption->setCaption(true);
    m_pReport->setObjectName(QStringLiteral("Studio_Report"));
    m_pReport->setReadOnly(true);
    m_pReport->setMinimumHeight(kLeastReportHeight);
    m_pReport->setTabChangesFocus(true);
    m_pReport->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(4);
    column->addWidget(m_pName);
    column->addWidget(m_pOrigin);
    column->addSpacing(8);
    column->addWidget(m_pPicture, 6);
    column->addSpacing(4);
    column->addWidget(m_pWaveform, 2);
    column->addSpacing(4);
    column->addWidget(m_pTransport);
    column->addSpacing(12);
    column->addWidget(m_pReportCaption);
    column->addWidget(m_pReport, 1);
}

void StudioTakeDetails::showTake(const StudioTake& take, const StudioPeaks& peaks)
{
    const bool playable = take.state == StudioTake::State::Good;
    const QString playedFile = playable ? take.path : QString();
    m_take = take;
    if (m_pPlayer->file() != playedFile) {
        m_pPlayer->setFile(playedFile);
    }
    showPicture(playable && take.picture.isValid());
    m_pWaveform->setPeaks(peaks);
    m_pWaveform->setDuration(take.durationMs);
    m_pWaveform->setPosition(m_pPlayer->positionMs());
    m_pTransport->setDuration(take.durationMs);
    m_pTransport->setPlayable(playable);
    RetranslateUi();
}

void StudioTakeDetails::showPicture(bool shown)
{
    m_pPicture->setVisible(shown);
    m_pWaveform->setFlat(shown);
    if (shown && m_posterPath != m_take.path) {
        m_posterPath = m_take.path;
        m_pPicture->setPoster(QImage());
        Q_EMIT posterWanted(m_take.path);
    }
}

void StudioTakeDetails::setPoster(const QString& path, const QImage& poster)
{
    if (path == m_posterPath) {
        m_pPicture->setPoster(poster);
    }
}

void StudioTakeDetails::RetranslateUi()
{
    m_pName->setText(m_take.name());
    m_pOrigin->setText(origin());
    m_pPicture->setAccessibleName(tr("Picture of the clip"));
    m_pWaveform->setNotice(notice());
    m_pReportCaption->setText(tr("What the recorder reported"));
    m_pReport->setPlainText(reportText());
    m_pReport->setAccessibleName(m_pReportCaption->text());
}

QString StudioTakeDetails::origin() const
{
    QStringList parts{formatTakeLength(m_take.durationMs)};
    if (!m_take.deviceName.isEmpty()) {
        parts.append(m_take.deviceName.simplified());
    }
    if (m_take.picture.isValid()) {
        parts.append(QStringLiteral("%1 \u00d7 %2")
                         .arg(m_take.picture.width())
                         .arg(m_take.picture.height()));
    }
    if (m_take.recorded.isValid()) {
        parts.append(QLocale().toString(m_take.recorded.toLocalTime(), QLocale::ShortFormat));
    }
    parts.append(QDir::toNativeSeparators(m_take.path));
    return parts.join(QStringLiteral("  \u00b7  "));
}

QString StudioTakeDetails::notice() const
{
    switch (m_take.state) {
    case StudioTake::State::Missing:
        return tr("The file is no longer there. Put it back and the take can be played again.");
    case StudioTake::State::Unreadable:
        return tr("The file cannot be read. %1").arg(mediaProblemText(m_take.problem));
    case StudioTake::State::Checking:
        return tr("Looking into the file\u2026");
    case StudioTake::State::Good:
        break;
    }
    return {};
}

QString StudioTakeDetails::reportText() const
{
    if (m_take.fileInfo.isEmpty() && m_take.fileExportInfo.isEmpty()) {
        return tr("Nothing: this take was recovered after the recorder had been interrupted.");
    }
    return QStringLiteral("fileInfo\n%1\nfileExportInfo\n%2")
        .arg(m_take.fileInfo, m_take.fileExportInfo)
        .trimmed();
}
