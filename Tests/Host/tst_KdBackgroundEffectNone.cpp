#include <KdVBLModel/KdBackgroundEffect.h>
#include <Support/KdTestCase.h>

#include <QByteArray>

/** The effect as it is built where its library is missing. */
class tst_KdBackgroundEffectNone : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void isNotAvailableAndLeavesEveryByte();
};

void tst_KdBackgroundEffectNone::isNotAvailableAndLeavesEveryByte()
{
    QVERIFY(!KdBackgroundEffect::isAvailable());
    KdBackgroundEffect effect;
    QByteArray frame(64 * 36 * 4, 'x');
    const QByteArray before = frame;
    for (const auto mode : {KdVBLMODEL::fcbmNone, KdVBLMODEL::fcbmRemove, KdVBLMODEL::fcbmBlur}) {
        effect.apply(mode, reinterpret_cast<uchar*>(frame.data()), 64, 36, 256);
        effect.reset();
    }
    QVERIFY(effect.waitForMask(std::chrono::milliseconds(0)));
    QCOMPARE(frame, before);
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdBackgroundEffectNone>(argc, argv);
}

#include "tst_KdBackgroundEffectNone.moc"
