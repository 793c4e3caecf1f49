#include <KdRecord/KAudioRecordPreviewWidget.h>
#include <KdRecord/KAudioSettings.h>
#include <KdRecord/KComboboxExt.h>
#include <KdRecord/KQuestionLabel.h>
#include <KdRecord/KRecordPreViewSettingRadiusWidget.h>
#include <KdRecord/KRecordVideoAdvancedClickEvent.h>
#include <KdRecord/KRecordVideoAdvancedExposeEvent.h>
#include <KdRecord/KVideoSettings.h>
#include <KdRecord/KdAudioDriverInstaller.h>
#include <KdRecord/KdAudioRecordHelper.h>
#include <KdRecord/KdAudioRecordView.h>
#include <KdRecord/KdCountCtrl.h>
#include <KdRecord/KdCountCtrlVideo.h>
#include <KdRecord/KdRecordDeviceConnector.h>
#include <KdRecord/KdWebCamDisplayLabel.h>
#include <KdRecord/KdWebcamRecordView.h>
#include <KdRecord/KdWebcamRecorderHelper.h>
#include <KdRecord/NotifyBeginPileInsetionEvent.h>
#include <KdRecord/NotifyEndPileInsetionEvent.h>

#include <Support/KdTestCase.h>

#include <QFile>

/**
 * That each public header compiles by itself is shown by the build, which compiles each of them
 * alone; here remains that none is forgotten.
 */
class tst_PublicHeaders : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void everyExportedClassHasAHeaderThatIsCompiledAlone_data()
    {
        QTest::addColumn<QString>("header");
        for (const char* header : {"KdCaptureEngine",
                                   "KdAudioRecordView",
                                   "KdAudioRecordHelper",
                                   "KdCountCtrl",
                                   "KdCountCtrlVideo",
                                   "KAudioSettings",
                                   "KComboboxExt",
                                   "KQuestionLabel",
                                   "KAudioRecordPreviewWidget",
                                   "KRecordAdvancedEvent",
                                   "KRecordVideoAdvancedClickEvent",
                                   "KRecordVideoAdvancedExposeEvent",
                                   "KdWebcamRecordView",
                                   "KdWebcamRecorderHelper",
                                   "KdWebCamDisplayLabel",
                                   "KRecordPreViewSettingRadiusWidget",
                                   "NotifyBeginPileInsetionEvent",
                                   "NotifyEndPileInsetionEvent",
                                   "KdRecordDeviceConnector",
                                   "KdAudioDriverInstaller",
                                   "KVideoSettings"}) {
            QTest::newRow(header) << QStringLiteral("KdRecord/") + QLatin1String(header) +
                                         QStringLiteral(".h");
        }
    }

    void everyExportedClassHasAHeaderThatIsCompiledAlone()
    {
        QFETCH(QString, header);
        QVERIFY(QStringLiteral(KDRECORD_PUBLIC_HEADERS).split(QLatin1Char(',')).contains(header));
    }

    // Linked with the library as hosts load it: what it hid would not link.
    void theLibraryExportsItsWidgetsAndHelpers()
    {
        const QVector<const QMetaObject*> classes{
            &KdAudioRecordView::staticMetaObject,
            &KdAudioRecorderHelper::staticMetaObject,
            &KdWebcamRecordView::staticMetaObject,
            &KdWebcamRecorderHelper::staticMetaObject,
            &KdRecordDeviceConnector::staticMetaObject,
            &KVideoSettings::staticMetaObject,
            &KdCountCtrl::staticMetaObject,
            &KdCountCtrlVideo::staticMetaObject,
            &KAudioSettings::staticMetaObject,
            &KComboboxExt::staticMetaObject,
            &KQuestionLabel::staticMetaObject,
            &KAudioRecordPreviewWidget::staticMetaObject,
            &KdWebCamDisplayLabel::staticMetaObject,
            &KRecordPreViewSettingRadiusWidget::staticMetaObject};
        for (const QMetaObject* meta : classes) {
            QVERIFY(meta->inherits(&QObject::staticMetaObject));
        }
        QVERIFY(KdAudioDriverInstaller::isAudioDriverInstalled());
    }

    void theLibraryExportsItsUsageReports()
    {
        const KRecordAdvancedEvent base(QStringLiteral("any"), KRecordAdvancedEvent::AudioRecorder);
        const KRecordVideoAdvancedExposeEvent expose(KRecordAdvancedEvent::AudioRecorder);
        const KRecordVideoAdvancedClickEvent click(KRecordAdvancedEvent::AudioRecorder,
                                                   QStringLiteral("apply"));
        QCOMPARE(base.properties(), expose.properties());
        QCOMPARE(click.properties().size(), 2);
    }

    void theLibraryExportsItsNoticesToTheHost()
    {
        const NotifyBeginPileInsetionEvent begin("label");
        const NotifyEndPileInsetionEvent end("label");
        const KdCustomEvent* const event = &begin;
        QVERIFY(dynamic_cast<const NotifyBeginPileInsetionEvent*>(event));
        QVERIFY(!dynamic_cast<const NotifyEndPileInsetionEvent*>(event));
        QCOMPARE(begin.label(), end.label());
    }

    void noPublicHeaderReachesIntoGStreamerOrPrivateHeaders_data()
    {
        QTest::addColumn<QString>("header");
        const auto headers = QStringLiteral(KDRECORD_PUBLIC_HEADERS).split(QLatin1Char(','));
        for (const QString& header : headers) {
            QTest::newRow(qUtf8Printable(header)) << header;
        }
    }

    void noPublicHeaderReachesIntoGStreamerOrPrivateHeaders()
    {
        QFETCH(QString, header);
        const QString folder = header.startsWith(QLatin1String("KdRecord/"))
                                   ? QStringLiteral("/Src/")
                                   : QStringLiteral("/Host/");
        QFile file(QStringLiteral(KDRECORD_SOURCE_DIR) + folder + header);
        QVERIFY2(file.open(QIODevice::ReadOnly), qUtf8Printable(file.fileName()));
        const QString text = QString::fromUtf8(file.readAll());
        QVERIFY(text.startsWith(QLatin1String("#pragma once")));
        QVERIFY(!text.contains(QLatin1String("<gst/")));
        QVERIFY(!text.contains(QRegularExpression(QStringLiteral("#include.*_p\\.h"))));
    }
};

int main(int argc, char** argv)
{
    return KdTest::run<tst_PublicHeaders>(argc, argv);
}

#include "tst_PublicHeaders.moc"
