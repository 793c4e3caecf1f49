#include "WebcamViewFixture.h"

#include <QJsonDocument>
#include <QTimer>
#include <QWindow>

void WebcamViewFixture::makeView(QWidget* parent)
{
    view = new KdWebcamRecordView(parent);
    window = view;
    adopt(view->findChild<KdWebcamRecordPanel*>());
}

void WebcamViewFixture::showView(QWidget* parent)
{
    makeView(parent);
    view->initDevices();
    view->show();
    QVERIFY(QTest::qWaitForWindowActive(view));
    signalTexts.clear();
}

int WebcamViewFixture::runModal(const std::function<void()>& step)
{
    QTimer::singleShot(0, this, [this, step] {
        DialogDriver::waitUntil(
            [this] { return view->windowHandle() && view->windowHandle()->isExposed(); },
            QStringLiteral("the dialog"));
        step();
        if (view) {
            view->close();
        }
    });
    return view->doModal();
}

QJsonObject WebcamViewFixture::object(const QVariant& text)
{
    return QJsonDocument::fromJson(text.toString().toUtf8()).object();
}
