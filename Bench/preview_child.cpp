// Shows the first camera as the webcam's dialog does, until it is killed, and prints every half a
// second how many pictures it has shown so far:
//   preview_child label none|blur|remove   the engine, and its pictures in the dialog's label
//   preview_child dialog                   the whole dialog

#include <KCore/KCoreDirs.h>
#include <KdRecord/KdCaptureEngine.h>
#include <KdRecord/KdWebCamDisplayLabel.h>
#include <KdRecord/KdWebcamRecordView.h>
#include <KdWidgets/KdSkinManager.h>

#include <QApplication>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <cstdio>
#include <cstdlib>

using namespace KdVBLMODEL;

namespace {

constexpr QSize kSurface(760, 428);
constexpr QSize kPicture(1280, 720);
constexpr double kRate = 30.0;
constexpr int kPatienceMs = 20000;
constexpr int kPrintMs = 500;

class PaintCount : public QObject
{
public:
    explicit PaintCount(KdWebCamDisplayLabel* label)
    {
        label->installEventFilter(this);
        m_printing.setInterval(kPrintMs);
        connect(&m_printing, &QTimer::timeout, this, [this] {
            std::printf("rendered: %d\n", m_count);
            std::fflush(stdout);
        });
        m_printing.start();
    }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        m_count += event->type() == QEvent::Paint ? 1 : 0;
        return QObject::eventFilter(watched, event);
    }

private:
    QTimer m_printing;
    int m_count = 0;
};

/** The engine's preview in a label, without a dialog around it. */
class LabelPreview : public IKdRecorderEventObserver
{
public:
    LabelPreview()
    {
        m_window.setFixedSize(kSurface);
        m_label.setFixedSize(kSurface);
        m_label.setRecording(true); // without its strip, should the mouse be there
        m_label.startRender();
        m_recorder->addEventObserver(this);
        m_recorder->setCallbackSwitch3(true);
    }
    ~LabelPreview() override
    {
        m_recorder->removeEventObserver(this);
        m_recorder->release();
    }

    bool open(_KdCaptureRecordBackgroundMode background)
    {
        m_window.show();
        if (!QTest::qWaitForWindowExposed(&m_window) ||
            !QTest::qWaitFor([this] { return hasCamera(); }, kPatienceMs)) {
            return false;
        }
        KdVideoFormat format;
        format.frameRate = kRate;
        m_recorder->setBackgroundMode(background);
        return m_recorder->setDevice(kdtWebcam, 0) && m_recorder->setResolution(kPicture) &&
               m_recorder->setVideoFormat(&format) && m_recorder->startPreview();
    }

    KdWebCamDisplayLabel* label() { return &m_label; }

    void onFrameChangedCallback(int width, int height, uint8_t* pARGB32Bits) override
    {
        m_label.WebcamFrameChanged(width, height, pARGB32Bits);
    }

private:
    bool hasCamera()
    {
        QList<_KdCaptureDevInf> cameras;
        return m_recorder->getDevices(kdtWebcam, &cameras) && !cameras.isEmpty();
    }

    QWidget m_window;
    KdWebCamDisplayLabel m_label{&m_window};
    IKdWebcamRecorder* m_recorder = createWebcamRecorder();
};

_KdCaptureRecordBackgroundMode backgroundFrom(const QString& name)
{
    if (name == QLatin1String("blur")) {
        return fcbmBlur;
    }
    return name == QLatin1String("remove") ? fcbmRemove : fcbmNone;
}

int showLabel(const QString& background)
{
    LabelPreview preview;
    if (!preview.open(backgroundFrom(background))) {
        return EXIT_FAILURE;
    }
    const PaintCount count(preview.label());
    return QApplication::exec();
}

int showDialog()
{
    KdWebcamRecordView view(nullptr);
    view.setAttribute(Qt::WA_DeleteOnClose, false);
    view.initDevices();
    view.show();
    const PaintCount count(view.findChild<KdWebCamDisplayLabel*>());
    return QApplication::exec();
}

} // namespace

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    const QTemporaryDir folder;
    setZentraDocumentDir(folder.path());
    KdSkin::KdSkinManager::instance()->setSkin(QStringLiteral("dark"));
    const QStringList arguments = QApplication::arguments();
    if (arguments.size() == 3 && arguments.at(1) == QLatin1String("label")) {
        return showLabel(arguments.at(2));
    }
    if (arguments.size() == 2 && arguments.at(1) == QLatin1String("dialog")) {
        return showDialog();
    }
    std::fputs("usage: preview_child label none|blur|remove | dialog\n", stderr);
    return 2;
}
