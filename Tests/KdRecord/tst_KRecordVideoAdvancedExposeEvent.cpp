#include <KdRecord/KRecordVideoAdvancedExposeEvent.h>

#include <Support/KdTestCase.h>

using Property = KdTrackEvent::Property;

class tst_KRecordVideoAdvancedExposeEvent : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void carriesTheRecorderOnly()
    {
        const KRecordVideoAdvancedExposeEvent event(KRecordAdvancedEvent::AudioRecorder);
        QCOMPARE(event.name(), QStringLiteral("record_video_advanced_setting_expose"));
        const QVector<Property> expected{
            {QStringLiteral("record_type"), QStringLiteral("record_audio")}};
        QCOMPARE(event.properties(), expected);
    }
};

int main(int argc, char** argv)
{
    return KdTest::run<tst_KRecordVideoAdvancedExposeEvent>(argc, argv);
}

#include "tst_KRecordVideoAdvancedExposeEvent.moc"
