#include <Studio/StudioWindow.h>

#include <KdAppSettings/KdAppSettings.h>
#include <KdVBLModel/KdProject.h>
#include <KdWidgets/KdLabel.h>
#include <KdWidgets/KdSkinManager.h>
#include <KdZentraCore/KdUtility.h>
#include <Studio/StudioEmptyState.h>
#include <Studio/StudioHeader.h>
#include <Studio/StudioImporter.h>
#include <Studio/StudioLanguages.h>
#include <Studio/StudioMediaProbe.h>
#include <Studio/StudioNoticeBar.h>
#include <Studio/StudioPlayer.h>
#include <Studio/StudioRecovery.h>
#include <Studio/StudioRecoveryBar.h>
#include <Studio/StudioResources.h>
#include <Studio/StudioSideWindows.h>
#include <Studio/StudioStartWatch.h>
#include <Studio/StudioTakeAnalyser.h>
#include <Studio/StudioTakeDetails.h>
#include <Studio/StudioTakeFolders.h>
#include <Studio/StudioTakeLibrary.h>
#include <Studio/StudioTakeModel.h>
#include <Studio/StudioTakePane.h>
#include <Studio/StudioTimeline.h>
#include <Studio/StudioUsageView.h>
#include <Studio/StudioVoiceOverSession.h>
#include <Studio/StudioWebcamSession.h>

#include <QAccessible>
#include <QCloseEvent>
#include <QDir>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QScreen>
#include <QStackedWidget>
#include <QTabWidget>
#include <QVBoxLayout>

namespace {

constexpr int kAbovePage = 16;
constexpr QSize kSize(1120, 760);
/** Of the window system, about. */
constexpr QSize kFrame(16, 48);

QString absolute(const QString& folder)
{
    return QDir::cleanPath(QDir(QDir::fromNativeSeparators(folder)).absolutePath());
}

/** Where voice-overs go, and the list of all takes with them. */
QString voiceFolder()
{
    auto* const folders = KdAppSettings::GetInstance()->GetSettings()->GetFolderSettings();
    return absolute(folders->GetRecorderVoiceFolder());
}

/** Where webcam clips go. */
QString captureFolder()
{
    auto* const folders = KdAppSettings::GetInstance()->GetSettings()->GetFolderSettings();
    return absolute(folders->GetCaptureFileFolder());
}

} // namespace

StudioWindow::StudioWindow(StudioLanguages* languages, QWidget* parent)
    : QMainWindow(parent)
    , m_pLanguages(languages)
    , m_pLibrary(new StudioTakeLibrary(this))
    , m_pAnalyser(new StudioTakeAnalyser(this))
    , m_pImporter(new StudioImporter(m_pLibrary, m_pAnalyser, this))
    , m_pModel(new StudioTakeModel(m_pLibrary, this))
    , m_pPlayer(new StudioPlayer(this))
    , m_pRecovery(new StudioRecovery(this))
    , m_pStarts(new StudioStartWatch(this))
    , m_pVoiceOver(new StudioVoiceOverSession(this))
    , m_pWebcam(new StudioWebcamSession(this))
    , m_pSideWindows(new StudioSideWindows(this))
{
    initStudioResources();
    setObjectName(QStringLiteral("StudioWindow"));
    buildBars();
    layOut();
    connectTakes();
    connectRecorders();
    connectHeader();
    connectPlayer();
    retranslate();
    readFrameRate();
    KdSkin::KdSkinManager::instance()->applyStyleSheet(this, QStringLiteral("Studio/StudioWindow"),
                                                       0);
    KdUtility::gSetMainWindow(this);
}

StudioWindow::~StudioWindow() = default;

void StudioWindow::buildBars()
{
    m_pHeader = new StudioHeader(m_pLanguages, this);
    m_pRecoveryBar = new StudioRecoveryBar(m_pRecovery, this);
    m_pLockBar = new StudioNoticeBar(QStringLiteral("record"), KdSkin::Record, this);
    m_pLockBar->setObjectName(QStringLiteral("Studio_LockBar"));
    m_pLockBar->hide();
    m_pTimeline = new StudioTimeline(this);
    m_pTimecode = new KdLabel(this);
    m_pTimecode->setObjectName(QStringLiteral("Studio_Timecode"));
    m_pFrameRate = new KdLabel(this);
    m_pFrameRate->setCaption(true);
    m_pStatus = new KdLabel(this);
    m_pStatus->setObjectName(QStringLiteral("Studio_Status"));
    m_pStatus->setCaption(true);
}

QWidget* StudioWindow::makeBody()
{
    auto* const body = new QWidget(this);
    // In the order of reading, which is that of the Tab key: the tabs before what they show.
    m_pTakes = new StudioTakePane(m_pModel, body);
    m_pTabs = new QTabWidget(body);
    m_pTabs->setObjectName(QStringLiteral("Studio_Tabs"));
    m_pEmpty = new StudioEmptyState(body);
    m_pDetails = new StudioTakeDetails(m_pPlayer, body);
    m_pPages = new QStackedWidget(body);
    m_pPages->addWidget(m_pEmpty);
    m_pPages->addWidget(m_pDetails);
    m_pUsage = new StudioUsageView(body);
    // Not by the skin: what a pane keeps free is missing in the least size that the tabs ask for.
    m_pPages->setContentsMargins(0, kAbovePage, 0, 0);
    m_pUsage->setContentsMargins(0, kAbovePage, 0, 0);
    m_pTabs->addTab(m_pPages, QString());
    m_pTabs->addTab(m_pUsage, QString());
    auto* const content = new QVBoxLayout;
    content->setContentsMargins(16, 8, 16, 16);
    content->addWidget(m_pTabs);
    auto* const row = new QHBoxLayout(body);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(0);
    row->addWidget(m_pTakes);
    row->addLayout(content, 1);
    return body;
}

void StudioWindow::layOut()
{
    m_pBody = makeBody();
    auto* const clock = new QVBoxLayout;
    clock->setContentsMargins(16, 12, 0, 12);
    clock->setSpacing(0);
    clock->addWidget(m_pTimecode);
    clock->addWidget(m_pFrameRate);
    clock->addStretch(1);
    auto* const strip = new QWidget(this);
    strip->setObjectName(QStringLiteral("Studio_Strip"));
    strip->setAttribute(Qt::WA_StyledBackground);
    auto* const stripRow = new QHBoxLayout(strip);
    stripRow->setContentsMargins(0, 4, 0, 0);
    stripRow->setSpacing(0);
    stripRow->addLayout(clock);
    stripRow->addWidget(m_pTimeline, 1);
    auto* const central = new QWidget(this);
    auto* const column = new QVBoxLayout(central);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(m_pHeader);
    column->addWidget(m_pRecoveryBar);
    column->addWidget(m_pLockBar);
    column->addWidget(m_pBody, 1);
    column->addWidget(strip);
    column->addWidget(m_pStatus);
    setCentralWidget(central);
    central->setFocus(); // no control looks chosen before the user chooses one
    resize(kSize.boundedTo(screen()->availableGeometry().size() - kFrame));
}

void StudioWindow::connectTakes()
{
    m_timelineRefresh.setSingleShot(true);
    connect(&m_timelineRefresh, &QTimer::timeout, this, &StudioWindow::showTimeline);
    connect(m_pLibrary, &StudioTakeLibrary::problem, this, &StudioWindow::tell);
    connect(m_pLibrary, &StudioTakeLibrary::changed, this, &StudioWindow::refreshTake);
    connect(m_pLibrary, &StudioTakeLibrary::reset, this, [this] { showTake(-1); });
    for (const auto change :
         {&StudioTakeLibrary::inserted, &StudioTakeLibrary::removed, &StudioTakeLibrary::changed}) {
        connect(m_pLibrary, change, this, &StudioWindow::refreshTimeline);
    }
    connect(m_pLibrary, &StudioTakeLibrary::reset, this, &StudioWindow::refreshTimeline);
    connect(m_pAnalyser, &StudioTakeAnalyser::waveformRead, this,
            [this](const QString& path, const StudioPeaks& peaks) {
                m_pModel->setPeaks(path, peaks);
                refreshTake(m_pLibrary->rowOf(path));
                refreshTimeline();
            });
    connect(m_pAnalyser, &StudioTakeAnalyser::thumbnailRead, this,
            [this](const QString& path, const QImage& thumbnail) {
                m_pModel->setThumbnail(path, thumbnail);
                refreshTimeline();
            });
    connect(m_pDetails, &StudioTakeDetails::posterWanted, m_pAnalyser,
            &StudioTakeAnalyser::readPoster);
    connect(m_pAnalyser, &StudioTakeAnalyser::posterRead, m_pDetails,
            &StudioTakeDetails::setPoster);
    connect(m_pTakes, &StudioTakePane::currentRowChanged, this, &StudioWindow::showTake);
    connect(m_pTakes, &StudioTakePane::removeRequested, this, [this](int row) {
        m_pLibrary->remove(QString(m_pLibrary->takes().at(row).path));
        showTake(m_pTakes->currentRow());
    });
    connect(m_pImporter, &StudioImporter::imported, this, [this](const QString& path) {
        tell([name = QFileInfo(path).fileName()] { return tr("%1 was added.").arg(name); });
        chooseTake(path);
    });
    connect(m_pImporter, &StudioImporter::skipped, this, [this] {
        tell([] { return tr("The recording was not kept; there is nothing to add."); });
    });
    connect(m_pImporter, &StudioImporter::failed, this,
            [this](const QString& path, const QString& why) {
                tell([name = QFileInfo(path).fileName(), why] {
                    return tr("%1 was not added. %2").arg(name, mediaProblemText(why));
                });
            });
    connect(m_pRecoveryBar, &StudioRecoveryBar::message, this, &StudioWindow::tell);
    connect(m_pRecoveryBar, &StudioRecoveryBar::recovered, m_pImporter,
            [this](const QString& path) { m_pImporter->import(path, QString(), QString()); });
}

void StudioWindow::connectRecorders()
{
    connect(m_pTakes, &StudioTakePane::voiceOverRequested, this, [this] { record(m_pVoiceOver); });
    connect(m_pTakes, &StudioTakePane::webcamRequested, this, [this] { record(m_pWebcam); });
    connectRecorder(m_pVoiceOver);
    connectRecorder(m_pWebcam);
    // A recorder stores a folder that its user chose only when it is closed.
    connect(m_pVoiceOver, &StudioRecordSession::takeStarted, this,
            [] { StudioTakeFolders::remember(voiceFolder()); });
    connect(m_pWebcam, &StudioRecordSession::takeStarted, this,
            [] { StudioTakeFolders::remember(captureFolder()); });
    // The start of a camera needs the machine for itself.
    connect(m_pStarts, &StudioStartWatch::startBegins, m_pAnalyser, &StudioTakeAnalyser::hold);
    connect(m_pStarts, &StudioStartWatch::startEnded, m_pAnalyser, &StudioTakeAnalyser::release);
}

void StudioWindow::connectHeader()
{
    using Side = StudioSideWindows;
    connect(m_pHeader, &StudioHeader::languageChosen, this, &StudioWindow::languageChosen);
    connect(m_pHeader, &StudioHeader::skinChosen, this, &StudioWindow::skinChosen);
    connect(m_pHeader, &StudioHeader::devicesRequested, m_pSideWindows, &Side::openDevices);
    connect(m_pHeader, &StudioHeader::audioSettingsRequested, m_pSideWindows,
            &Side::openAudioSettings);
    connect(m_pHeader, &StudioHeader::videoSettingsRequested, m_pSideWindows,
            &Side::openVideoSettings);
}

void StudioWindow::connectRecorder(StudioRecordSession* session)
{
    using Session = StudioRecordSession;
    connect(session, &Session::takeStarted, this, &StudioWindow::beginTake);
    connect(session, &Session::takeStartFailed, this,
            [this] { tell([] { return tr("The recording could not begin."); }); });
    connect(session, &Session::takeRuns, this, [this](qint64 frames) {
        m_pTimeline->setRecordedFrames(frames);
        m_pTimecode->setText(
            StudioTimecode::text(m_pTimeline->playhead(), m_pTimeline->frameRate()));
    });
    connect(session, &Session::takeFinished, this, &StudioWindow::endTake);
    connect(session, &Session::mute, m_pPlayer, &StudioPlayer::setMuted);
    connect(session, &Session::lockChanged, this, &StudioWindow::setLocked);
    connect(session, &Session::closed, m_pTimeline, &StudioTimeline::endRecording);
}

void StudioWindow::record(StudioRecordSession* wanted)
{
    StudioRecordSession* const other = wanted == m_pWebcam ? m_pVoiceOver : m_pWebcam;
    StudioRecordSession* const session = other->isOpen() ? other : wanted;
    // The last step: a modal recorder runs in it, and this window may be gone when it ends.
    session->open();
}

void StudioWindow::connectPlayer()
{
    connect(m_pTakes, &StudioTakePane::activated, m_pPlayer, &StudioPlayer::play);
    connect(m_pPlayer, &StudioPlayer::positionChanged, this, &StudioWindow::showPlayPosition);
    connect(m_pPlayer, &StudioPlayer::failed, this, [this](const KdLiveText& why) {
        tell([why] { return tr("Playing is not possible. %1").arg(why.now()); });
    });
    connect(m_pTimeline, &StudioTimeline::clipClicked, this, &StudioWindow::chooseTake);
}

void StudioWindow::openTakes()
{
    openVoiceFolder();
    QStringList folders{m_pLibrary->folder()};
    folders.append(captureFolder());
    folders.append(StudioTakeFolders::remembered());
    folders.removeDuplicates();
    m_pRecovery->find(folders);
    tell([folder = QDir::toNativeSeparators(m_pLibrary->folder())] {
        return tr("Takes are kept in %1").arg(folder);
    });
}

void StudioWindow::openVoiceFolder()
{
    const QString folder = voiceFolder();
    if (folder != m_pLibrary->folder()) {
        m_pLibrary->open(folder);
    }
}

void StudioWindow::readFrameRate()
{
    qint64 numerator = 0;
    qint64 denominator = 0;
    KdVBLMODEL::toFrameRate(IKdProjectManager::getInstance()->frameRate(), numerator, denominator);
    const double rate = StudioTimecode::framesPerSecond(numerator, denominator);
    m_pTimeline->setFrameRate(rate);
    m_pFrameRate->setText(tr("%1 frames per second").arg(QString::number(rate, 'g', 4)));
    m_pTimecode->setText(StudioTimecode::text(m_pTimeline->playhead(), rate));
    showTimeline();
}

QString StudioWindow::statusText() const
{
    return m_pStatus->text();
}

void StudioWindow::tell(const KdLiveText& news)
{
    m_status = news;
    showStatus();
    QAccessibleEvent alert(m_pStatus, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
}

void StudioWindow::showStatus()
{
    m_pStatus->setText(m_status.now().simplified());
}

void StudioWindow::showTake(int row)
{
    const bool chosen = row >= 0 && row < m_pLibrary->count();
    m_pEmpty->setHasTakes(m_pLibrary->count() > 0);
    m_pPages->setCurrentIndex(chosen ? 1 : 0);
    const StudioTake take = chosen ? m_pLibrary->takes().at(row) : StudioTake();
    m_pDetails->showTake(take, m_pModel->peaks(take.path));
    m_pTimeline->setCurrentClip(take.path);
}

void StudioWindow::refreshTake(int row)
{
    if (row >= 0 && row == m_pTakes->currentRow()) {
        showTake(row);
    }
}

void StudioWindow::chooseTake(const QString& path)
{
    m_pTakes->setCurrentRow(m_pLibrary->rowOf(path));
}

void StudioWindow::refreshTimeline()
{
    m_timelineRefresh.start();
}

void StudioWindow::showTimeline()
{
    QVector<StudioClip> clips = layOutClips(m_pLibrary->takes(), m_pTimeline->frameRate());
    for (StudioClip& clip : clips) {
        clip.peaks = m_pModel->peaks(clip.path);
        clip.thumbnail = m_pModel->thumbnail(clip.path);
    }
    m_pTimeline->setClips(clips);
}

void StudioWindow::showPlayPosition(qint64 milliseconds)
{
    if (m_pTimeline->isRecording()) {
        return;
    }
    for (const StudioClip& clip : m_pTimeline->clips()) {
        if (clip.path == m_pPlayer->file()) {
            m_pTimeline->setPlayhead(
                clip.start + StudioTimecode::framesFromMs(milliseconds, m_pTimeline->frameRate()));
        }
    }
    m_pTimecode->setText(StudioTimecode::text(m_pTimeline->playhead(), m_pTimeline->frameRate()));
}

void StudioWindow::setLocked(bool locked)
{
    m_pLockBar->setVisible(locked);
    m_pHeader->setEnabled(!locked);
    m_pBody->setEnabled(!locked);
}

void StudioWindow::beginTake()
{
    m_pTimeline->beginRecording();
    tell([] { return tr("Recording\u2026"); });
}

void StudioWindow::endTake(const QString& path, const QString& fileInfo,
                           const QString& fileExportInfo)
{
    m_pTimeline->endRecording();
    // The recorder's user may have chosen another folder for takes.
    openVoiceFolder();
    m_pImporter->import(path, fileInfo, fileExportInfo);
}

void StudioWindow::retranslate()
{
    setWindowTitle(KdUtility::gGetProductName());
    m_pTabs->setTabText(0, tr("Take"));
    m_pTabs->setTabText(1, tr("Usage events"));
    m_pLockBar->setTexts(tr("The recorder is at work"),
                         tr("The project is locked until the take is over."));
    readFrameRate();
    showStatus();
}

void StudioWindow::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange) {
        retranslate();
    }
    QMainWindow::changeEvent(event);
}

void StudioWindow::closeEvent(QCloseEvent* event)
{
    m_pVoiceOver->finish();
    m_pWebcam->finish();
    m_pSideWindows->closeAll();
    m_pPlayer->stop();
    m_pImporter->flush();
    QMainWindow::closeEvent(event);
}
