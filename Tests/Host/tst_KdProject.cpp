#include <KdVBLModel/KdProject.h>

#include <Support/KdTestCase.h>

#include <limits>

using KdVBLMODEL::KdFrameRate;
Q_DECLARE_METATYPE(KdVBLMODEL::KdFrameRate)

class tst_KdProject : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void convertsRatesToFractionsAndBack_data()
    {
        QTest::addColumn<KdFrameRate>("rate");
        QTest::addColumn<qint64>("numerator");
        QTest::addColumn<qint64>("denominator");
        QTest::newRow("23.976") << KdFrameRate::Fps23_976 << qint64(24000) << qint64(1001);
        QTest::newRow("24") << KdFrameRate::Fps24 << qint64(24) << qint64(1);
        QTest::newRow("25") << KdFrameRate::Fps25 << qint64(25) << qint64(1);
        QTest::newRow("29.97") << KdFrameRate::Fps29_97 << qint64(30000) << qint64(1001);
        QTest::newRow("30") << KdFrameRate::Fps30 << qint64(30) << qint64(1);
        QTest::newRow("48") << KdFrameRate::Fps48 << qint64(48) << qint64(1);
        QTest::newRow("50") << KdFrameRate::Fps50 << qint64(50) << qint64(1);
        QTest::newRow("59.94") << KdFrameRate::Fps59_94 << qint64(60000) << qint64(1001);
        QTest::newRow("60") << KdFrameRate::Fps60 << qint64(60) << qint64(1);
        QTest::newRow("120") << KdFrameRate::Fps120 << qint64(120) << qint64(1);
    }

    void convertsRatesToFractionsAndBack()
    {
        QFETCH(KdFrameRate, rate);
        QFETCH(qint64, numerator);
        QFETCH(qint64, denominator);
        qint64 actualNumerator = -1;
        qint64 actualDenominator = -1;
        KdVBLMODEL::toFrameRate(rate, actualNumerator, actualDenominator);
        QCOMPARE(actualNumerator, numerator);
        QCOMPARE(actualDenominator, denominator);
        QCOMPARE(KdVBLMODEL::fromFraction(numerator, denominator), rate);
        QCOMPARE(KdVBLMODEL::fromFraction(numerator * 5, denominator * 5), rate);
    }

    void aRateThatIsNoneIsNothingOverNothing()
    {
        for (const KdFrameRate rate :
             {KdFrameRate::Unknown, static_cast<KdFrameRate>(-1), static_cast<KdFrameRate>(99)}) {
            qint64 numerator = -1;
            qint64 denominator = -1;
            KdVBLMODEL::toFrameRate(rate, numerator, denominator);
            QCOMPARE(numerator, qint64(0));
            QCOMPARE(denominator, qint64(0));
        }
    }

    void aFractionThatIsNoRateIsUnknown_data()
    {
        QTest::addColumn<qint64>("numerator");
        QTest::addColumn<qint64>("denominator");
        const qint64 most = std::numeric_limits<qint64>::max();
        const qint64 least = std::numeric_limits<qint64>::min();
        QTest::newRow("none") << qint64(0) << qint64(0);
        QTest::newRow("over zero") << qint64(24) << qint64(0);
        QTest::newRow("negative") << qint64(-24) << qint64(1);
        QTest::newRow("both negative") << qint64(-24) << qint64(-1);
        QTest::newRow("near 23.976") << qint64(2397) << qint64(100);
        QTest::newRow("beside 24") << qint64(2400000001) << qint64(100000000);
        QTest::newRow("huge") << most << qint64(1);
        QTest::newRow("tiny") << qint64(1) << most;
        QTest::newRow("least") << least << least;
    }

    void aFractionThatIsNoRateIsUnknown()
    {
        QFETCH(qint64, numerator);
        QFETCH(qint64, denominator);
        QCOMPARE(KdVBLMODEL::fromFraction(numerator, denominator), KdFrameRate::Unknown);
    }

    void theProjectKeepsItsRate()
    {
        IKdProjectManager* project = IKdProjectManager::getInstance();
        QCOMPARE(IKdProjectManager::getInstance(), project);
        QCOMPARE(project->frameRate(), KdFrameRate::Fps30);
        project->setFrameRate(KdFrameRate::Fps23_976);
        QCOMPARE(project->frameRate(), KdFrameRate::Fps23_976);
        project->setFrameRate(KdFrameRate::Unknown);
        QCOMPARE(project->frameRate(), KdFrameRate::Unknown);
        project->setFrameRate(KdFrameRate::Fps30);
    }
};

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdProject>(argc, argv);
}

#include "tst_KdProject.moc"
