#include "StudioScenes.h"

#include <KdAppSettings/KdAppSettings.h>
#include <KdVBLModel/KdTrackEventLog.h>
#include <KdZentraCore/KdUtility.h>
#include <Studio/StudioRecovery.h>
#include <Studio/StudioSpeech.h>
#include <Studio/StudioTake.h>
#include <Studio/StudioTakeAnalyser.h>
#include <Studio/StudioTakeDetails.h>
#include <Studio/StudioTakeLibrary.h>
#include <Studio/StudioTakeModel.h>
#include <Studio/StudioTimeline.h>

#include <Support/DialogDriver.h>
#include <Support/TestFiles.h>

#include <QListView>
#include <QTest>

namespace {

const QDateTime kMoment(QDate(2026, 3, 14), QTime(9, 15), Qt::UTC);

QImage picture()
{
    QImage image(320, 180, QImage::Format_RGB32);
    image.fill(Qt::darkCyan);
    return image;
}

StudioTake takeIn(StudioTake::State state, const QString& problem = QString())
{
    StudioTake take;
    take.state = state;
    take.problem = problem;
    return take;
}

} // namespace

StudioStage::StudioStage(StudioLanguages& languages)
{
    KdTrackEventLog::clear();
    KdAppSettings::GetInstance()->Load();
    auto* const folders = KdAppSettings::GetInstance()->GetSettings()->GetFolderSettings();
    folders->SetRecoderVoiceFolder(m_folder.path());
    folders->SetCaptureFileFolder(m_folder.path());
    m_window = std::make_unique<StudioWindow>(&languages);
    // What is found in the files is the scenes' to say.
    m_window->analyser()->hold();
    bool hasLooked = false;
    QObject::connect(m_window->findChild<StudioRecovery*>(), &StudioRecovery::found, m_window.get(),
                     [&hasLooked] { hasLooked = true; });
    m_window->openTakes();
    m_window->show();
    if (!QTest::qWaitForWindowActive(m_window.get())) {
        DialogDriver::fail(QStringLiteral("Studio does not get the keyboard"));
    }
    DialogDriver::waitUntil([&hasLooked] { return hasLooked; },
                            QStringLiteral("the look for unfinished takes"));
    QObject::disconnect(m_window->findChild<StudioRecovery*>(), nullptr, m_window.get(), nullptr);
}

StudioStage::~StudioStage()
{
    m_window.reset();
    KdUtility::gSetMainWindow(nullptr);
}

void StudioStage::addTakes()
{
    using State = StudioTake::State;
    const QByteArray sound = StudioSpeech::synthesise(1.0);
    add(QStringLiteral("spoken.wav"), sound, takeIn(State::Good));
    addClip();
    add(QStringLiteral("missing.wav"), QByteArray(), takeIn(State::Missing));
    add(QStringLiteral("unreadable.wav"), "no sound",
        takeIn(State::Unreadable, QStringLiteral("It is empty.")));
    StudioTake recovered = takeIn(State::Good);
    recovered.path = m_folder.filePath(QStringLiteral("recovered.wav"));
    TestFiles::write(recovered.path, sound);
    m_window->library()->add(recovered);
    DialogDriver::waitUntil([this] { return m_window->timeline()->clips().size() == 3; },
                            QStringLiteral("the takes on the timeline"));
}

void StudioStage::addClip()
{
    StudioTake clip = takeIn(StudioTake::State::Good);
    clip.picture = QSize(1280, 720);
    add(QStringLiteral("clip.mp4"), "a clip", clip);
    const QString path = m_folder.filePath(QStringLiteral("clip.mp4"));
    Q_EMIT m_window->analyser()->thumbnailRead(path, picture());
    QObject::connect(m_window->findChild<StudioTakeDetails*>(), &StudioTakeDetails::posterWanted,
                     m_window->analyser(), [this](const QString& wanted) {
                         Q_EMIT m_window->analyser()->posterRead(wanted, picture());
                     });
}

void StudioStage::add(const QString& name, const QByteArray& content, const StudioTake& like)
{
    const QString path = m_folder.filePath(name);
    if (!content.isNull()) {
        TestFiles::write(path, content);
    }
    StudioTake take = takeFromReport(path, QStringLiteral("{\"device_name\": \"Mic A\"}"), {});
    take.state = like.state;
    take.problem = like.problem;
    take.picture = like.picture;
    take.durationMs = 61000;
    take.recorded = kMoment;
    m_window->library()->add(take);
    Q_EMIT m_window->analyser()->waveformRead(path, StudioPeaks(40, {0.8F, 0.4F}));
}

void StudioStage::choose(Row row)
{
    auto* const list = m_window->findChild<QListView*>(QStringLiteral("Studio_TakeList"));
    list->setCurrentIndex(list->model()->index(row, 0));
    QCoreApplication::processEvents();
}

void StudioStage::findUnfinished(int count)
{
    QVector<UnfinishedTake> takes(count);
    for (UnfinishedTake& take : takes) {
        take.record.takePath = m_folder.filePath(QStringLiteral("REC_20260314_094107.m4a"));
        take.record.started = kMoment;
        take.bytes = 734003;
    }
    Q_EMIT m_window->findChild<StudioRecovery*>()->found(takes);
    QCoreApplication::processEvents();
}
