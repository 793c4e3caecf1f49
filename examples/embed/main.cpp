// The smallest host: a window with a button for each dialog, which says what it is handed.

#include <KdCore/KdLazySingletonManager.h>
#include <KdRecord/KdAudioRecordView.h>
#include <KdRecord/KdRecordTranslation.h>
#include <KdRecord/KdWebcamRecordView.h>
#include <KdVBLModel/KdProject.h>
#include <KdZentraCore/KdUtility.h>

#include <QApplication>
#include <QLabel>
#include <QLocale>
#include <QPointer>
#include <QPushButton>
#include <QTextStream>
#include <QVBoxLayout>

class Editor : public QWidget
{
public:
    Editor();

private:
    void recordVoiceOver();
    void recordWebcam();
    void import(const QString& path, const QString& fileInfo);

    QPointer<KdAudioRecordView> m_voiceOver;
    QLabel* m_lastTake = new QLabel(QStringLiteral("Nothing recorded yet"));
};

Editor::Editor()
{
    auto* const voiceOver = new QPushButton(QStringLiteral("Record voice-over"));
    auto* const webcam = new QPushButton(QStringLiteral("Record webcam"));
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(voiceOver);
    layout->addWidget(webcam);
    layout->addWidget(m_lastTake);
    connect(voiceOver, &QPushButton::clicked, this, &Editor::recordVoiceOver);
    connect(webcam, &QPushButton::clicked, this, &Editor::recordWebcam);
    KdUtility::gSetMainWindow(this); // takes no input while a take runs
}

void Editor::recordVoiceOver()
{
    if (m_voiceOver) {
        m_voiceOver->activateWindow();
        return;
    }
    m_voiceOver = new KdAudioRecordView(this); // deletes itself when it is closed
    connect(m_voiceOver, &KdAudioRecordView::sigFinished, this, &Editor::import);
    m_voiceOver->doModal(); // returns at once
}

void Editor::recordWebcam()
{
    auto* const view = new KdWebcamRecordView(this); // deletes itself when it is closed
    connect(view, &KdWebcamRecordView::sigFinished, this, &Editor::import);
    view->initDevices();
    view->doModal(); // returns when it is closed
}

void Editor::import(const QString& path, const QString& fileInfo)
{
    if (path.isEmpty()) { // too short, nothing to import
        return;
    }
    m_lastTake->setText(path);
    QTextStream(stdout) << "finished " << path << Qt::endl << fileInfo.simplified() << Qt::endl;
}

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    KdRecordTranslation::install(QLocale());
    IKdProjectManager::getInstance()->setFrameRate(KdVBLMODEL::KdFrameRate::Fps25);
    int status = 0;
    {
        Editor editor;
        editor.show();
        status = QApplication::exec();
    }
    KdLazySingletonManager::instance()->releaseAll(); // writes what is still to be written
    return status;
}
