// A host with an engine of its own: the dialogs show its devices, and its files are handed over.
//   FILE_ENGINE_DEVICES=folder own-engine

#include <KdCore/KdLazySingletonManager.h>
#include <KdRecord/KdAudioRecordView.h>
#include <KdVBLModel/KdProject.h>

#include <QApplication>
#include <QTextStream>

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    // The project is the host's too, in the same library as the engine.
    IKdProjectManager::getInstance()->setFrameRate(KdVBLMODEL::KdFrameRate::Fps25);
    auto* const view = new KdAudioRecordView; // deletes itself when it is closed
    QObject::connect(view, &KdAudioRecordView::sigFinished, view, [](const QString& path) {
        QTextStream(stdout) << "finished " << path << Qt::endl;
    });
    view->doModal();
    const int status = QApplication::exec();
    KdLazySingletonManager::instance()->releaseAll();
    return status;
}
