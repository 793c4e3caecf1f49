#include <KdRecord/KRecordVideoAdvancedClickEvent.h>

#include <Support/KdTestCase.h>

using Property = KdTrackEvent::Property;

class tst_KRecordVideoAdvancedClickEvent : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void applyCarriesTheRecorderAndThenTheButtonAndNothingElse()
    {
        const KRecordVideoAdvancedClickEvent event(KRecordAdvancedEvent::AudioRecorder,
                                                   QStringLiteral("apply"));
        QCOMPARE(event.name(), QStringLiteral("record_video_advanced_setting_click"));
        const QVector<Property> expected{
            {QStringLiteral("record_type"), QStringLiteral("record_audio")},
            {QStringLiteral("button_name"), QStringLiteral("apply")}};
        QCOMPARE(event.properties(), expected);
    }

    void anUnknownRecorderLeavesTheButtonAlone()
    {
        const KRecordVideoAdvancedClickEvent event(
            static_cast<KRecordAdvancedEvent::_KRecorderType>(7), QStringLiteral("audio_channel"));
        const QVector<Property> expected{
            {QStringLiteral("button_name"), QStringLiteral("audio_channel")}};
        QCOMPARE(event.properties(), expected);
    }

    void anyButtonNamePassesUnchanged()
    {
        const QString name = QStringLiteral("\"%1\" <b>\n");
        const KRecordVideoAdvancedClickEvent event(KRecordAdvancedEvent::VideoRecorder, name);
        QCOMPARE(event.properties().last().second.toString(), name);
        QCOMPARE(event.properties().first().second.toString(), QStringLiteral("record_video"));
    }
};

int main(int argc, char** argv)
{
    return KdTest::run<tst_KRecordVideoAdvancedClickEvent>(argc, argv);
}

#include "tst_KRecordVideoAdvancedClickEvent.moc"
