#include <Support/KdTestCase.h>

#include <Studio/StudioDeviceRows.h>

using namespace KdVBLMODEL;

namespace {

_KdCaptureDevInf camera(const QString& id, const QString& name, int index = 0)
{
    return {kdtWebcam, index, name, id};
}

} // namespace

class tst_StudioDeviceRows : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void theDevicesStandInTheirOrderWithTheCurrentOneMarked()
    {
        const auto rows =
            StudioDeviceRows::of({camera(QStringLiteral("a"), QStringLiteral("Left")),
                                  camera(QStringLiteral("b"), QStringLiteral("Right"), 1)},
                                 camera(QStringLiteral("b"), QStringLiteral("its former name")));
        QCOMPARE(rows.size(), 2);
        QCOMPARE(rows.at(0).name, QStringLiteral("Left"));
        QCOMPARE(rows.at(0).state, StudioDeviceRow::Listed);
        QCOMPARE(rows.at(1).name, QStringLiteral("Right"));
        QCOMPARE(rows.at(1).state, StudioDeviceRow::Current);
    }

    void aLostDeviceStandsAtTheEnd()
    {
        const auto rows =
            StudioDeviceRows::of({camera(QStringLiteral("a"), QStringLiteral("Left"))},
                                 camera(QStringLiteral("b"), QStringLiteral("Right")));
        QCOMPARE(rows.size(), 2);
        QCOMPARE(rows.at(1).name, QStringLiteral("Right"));
        QCOMPARE(rows.at(1).state, StudioDeviceRow::Lost);
    }

    void noDeviceIsNoRow() { QVERIFY(StudioDeviceRows::of({}, _KdCaptureDevInf()).isEmpty()); }

    void namesStandOnOneLine()
    {
        const auto rows = StudioDeviceRows::of(
            {camera(QStringLiteral("a"), QStringLiteral("two\nlines"))}, _KdCaptureDevInf());
        QCOMPARE(rows.at(0).name, QStringLiteral("two lines"));
    }

    void theFirstThatIsMissingIsFoundByTypeAndId()
    {
        const _KdCaptureDevInf left = camera(QStringLiteral("a"), QStringLiteral("Left"));
        const _KdCaptureDevInf right = camera(QStringLiteral("b"), QStringLiteral("Right"));
        const _KdCaptureDevInf renamed = camera(QStringLiteral("a"), QStringLiteral("Other"), 4);
        QCOMPARE(StudioDeviceRows::firstMissing({left}, {renamed, right}).id, right.id);
        QCOMPARE(StudioDeviceRows::firstMissing({left, right}, {renamed}).devType,
                 static_cast<qint32>(kdtNone));
        QCOMPARE(StudioDeviceRows::firstMissing({}, {}).devType, static_cast<qint32>(kdtNone));
    }
};

int main(int argc, char** argv)
{
    return KdTest::run<tst_StudioDeviceRows>(argc, argv);
}

#include "tst_StudioDeviceRows.moc"
