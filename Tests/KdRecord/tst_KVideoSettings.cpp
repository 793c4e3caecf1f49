#include <KdRecord/KComboboxExt.h>
#include <KdRecord/KQuestionLabel.h>
#include <KdRecord/KVideoSettings.h>
#include <KdWidgets/KdComboBox.h>
#include <KdWidgets/KdLabel.h>

#include <Support/KdTestCase.h>

#include <QSignalSpy>
#include <QTranslator>

#include <cmath>
#include <limits>
#include <memory>

namespace {

constexpr quint32 H264 = 0x34363243;

/** Translates every text of the page into capitals between brackets. */
class Shouting : public QTranslator
{
public:
    bool isEmpty() const override { return false; }
    QString translate(const char* context, const char* source, const char* /*disambiguation*/,
                      int /*n*/) const override
    {
        return qstrcmp(context, "KVideoSettings") == 0
                   ? QStringLiteral("[%1]").arg(QString::fromUtf8(source).toUpper())
                   : QString();
    }
};

} // namespace

Q_DECLARE_METATYPE(_VideoAdvanceData)

class tst_KVideoSettings : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void offersTheChoicesInOrder_data();
    void offersTheChoicesInOrder();
    void everyFrameRateIsInSight();
    void qualityCodesStandInTheirOwnOrder();
    void standsRowsBelowEachOther();
    void onlyTheModeHasAQuestionMark();
    void modeIsExplained();

    void holdsTheFirstChoicesAtFirst();
    void dataIsWhatIsSelected();
    void loadsEveryFrameRateAndQuality();
    void aFrameRateHasToBeExact_data();
    void aFrameRateHasToBeExact();
    void unknownValuesLeaveTheirRows_data();
    void unknownValuesLeaveTheirRows();
    void loadingReportsEachRowThatChanges_data();
    void loadingReportsEachRowThatChanges();
    void loadsRowsInAFixedOrder();

    void openingAListIsReported_data();
    void openingAListIsReported();
    void everyChangeIsReported_data();
    void everyChangeIsReported();

    void newLanguageKeepsSelections();
    void languageChangeIsNoticed();

private:
    KdComboBox& combo(const char* row) const;

    std::unique_ptr<QWidget> m_window;
    KVideoSettings* m_page = nullptr;
};

void tst_KVideoSettings::init()
{
    KdTestCase::init();
    m_window = std::make_unique<QWidget>();
    m_window->resize(480, 400);
    m_page = new KVideoSettings(m_window.get());
    m_page->setGeometry(32, 40, 416, 288);
}

void tst_KVideoSettings::cleanup()
{
    m_window.reset();
    KdTestCase::cleanup();
}

KdComboBox& tst_KVideoSettings::combo(const char* row) const
{
    return *m_page->findChild<KComboboxExt*>(QStringLiteral("KVideoSettings_") + QLatin1String(row))
                ->combobox();
}

void tst_KVideoSettings::offersTheChoicesInOrder_data()
{
    QTest::addColumn<QByteArray>("row");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("texts");
    QTest::addColumn<QVector<float>>("data");

    QTest::newRow("encoder") << QByteArray("Encoder") << QStringLiteral("Encoder")
                             << QStringLiteral("H264") << QVector<float>{float(H264)};
    QTest::newRow("frame rate")
        << QByteArray("FrameRate") << QStringLiteral("Frame Rate")
        << QStringLiteral("12 fps|15 fps|20 fps|23.97 fps|24 fps|25 fps|29.97 fps|30 fps|50 fps|"
                          "59.94 fps|60 fps")
        << QVector<float>{12, 15, 20, 23.97F, 24, 25, 29.97F, 30, 50, 59.94F, 60};
    QTest::newRow("mode") << QByteArray("BitrateMode") << QStringLiteral("Bitrate Mode")
                          << QStringLiteral("VBR") << QVector<float>{1};
    QTest::newRow("quality") << QByteArray("Quality") << QStringLiteral("Quality")
                             << QStringLiteral("10%|20%|30%|40%|50%|60%")
                             << QVector<float>{7, 5, 1, 3, 8, 10};
}

void tst_KVideoSettings::offersTheChoicesInOrder()
{
    QFETCH(QByteArray, row);
    QFETCH(QString, title);
    QFETCH(QString, texts);
    QFETCH(QVector<float>, data);
    QStringList shown;
    QVector<float> values;
    for (int i = 0; i < combo(row).count(); ++i) {
        shown.append(combo(row).itemText(i));
        values.append(combo(row).itemData(i).toFloat());
    }

    QCOMPARE(shown.join(QLatin1Char('|')), texts);
    QCOMPARE(values, data);
    QCOMPARE(combo(row).parentWidget()->findChild<KdLabel*>()->text(), title);
}

void tst_KVideoSettings::everyFrameRateIsInSight()
{
    QVERIFY(combo("FrameRate").maxVisibleItems() >= combo("FrameRate").count());
}

void tst_KVideoSettings::qualityCodesStandInTheirOwnOrder()
{
    for (const quint32 code : {7U, 5U, 1U, 3U, 8U, 10U}) {
        m_page->loadData({H264, 12.0F, 1, code});
        QCOMPARE(m_page->data().quality, code);
    }
    m_page->loadData({H264, 12.0F, 1, 1});
    QCOMPARE(combo("Quality").currentText(), QStringLiteral("30%"));
}

void tst_KVideoSettings::standsRowsBelowEachOther()
{
    KVideoSettings page(nullptr);
    page.resize(416, page.sizeHint().height());
    page.show();

    QCOMPARE(page.sizeHint().height(), 288);
    const auto* const title = page.findChild<KdLabel*>(QString(), Qt::FindDirectChildrenOnly);
    QCOMPARE(title->text(), QStringLiteral("Video"));
    QCOMPARE(title->geometry(), QRect(0, 0, 416, 16));
    const QList<KComboboxExt*> rows = page.findChildren<KComboboxExt*>();
    QStringList names;
    for (int i = 0; i < rows.size(); ++i) {
        QCOMPARE(rows[i]->geometry(), QRect(0, 32 + i * 68, 416, 52));
        names.append(rows[i]->objectName().mid(15));
    }
    QCOMPARE(names.join(QLatin1Char(' ')), QStringLiteral("Encoder FrameRate BitrateMode Quality"));
}

void tst_KVideoSettings::onlyTheModeHasAQuestionMark()
{
    const QList<KQuestionLabel*> marks = m_page->findChildren<KQuestionLabel*>();
    QCOMPARE(marks.size(), 1);
    QCOMPARE(marks.first()->parentWidget(), combo("BitrateMode").parentWidget());
}

/** In the words of the audio page. */
void tst_KVideoSettings::modeIsExplained()
{
    QCOMPARE(combo("BitrateMode").accessibleDescription(),
             QStringLiteral("Bitrate mode affects audio quality and file size.Use CBR for stable "
                            "streaming, VBR for better quality, and ABR for balanced control."));
}

void tst_KVideoSettings::holdsTheFirstChoicesAtFirst()
{
    const _VideoAdvanceData data = m_page->data();
    QCOMPARE(data.encoder, H264);
    QCOMPARE(data.frameRate, 12.0F);
    QCOMPARE(data.bitrateMode, 1U);
    QCOMPARE(data.quality, 7U);
    QVERIFY(data == _VideoAdvanceData());
}

void tst_KVideoSettings::dataIsWhatIsSelected()
{
    combo("FrameRate").setCurrentIndex(6);
    combo("Quality").setCurrentIndex(2);
    QVERIFY(m_page->data() == (_VideoAdvanceData{H264, 29.97F, 1, 1}));
    combo("FrameRate").setCurrentIndex(-1);
    combo("Quality").setCurrentIndex(-1);
    QVERIFY(m_page->data() == (_VideoAdvanceData{H264, 0.0F, 1, 0}));
}

void tst_KVideoSettings::loadsEveryFrameRateAndQuality()
{
    for (const float rate : {60.0F, 59.94F, 50.0F, 30.0F, 29.97F, 25.0F, 24.0F, 23.97F, 20.0F}) {
        const _VideoAdvanceData data{H264, rate, 1, rate > 25 ? 10U : 5U};
        m_page->loadData(data);
        QVERIFY(m_page->data() == data);
    }
}

void tst_KVideoSettings::aFrameRateHasToBeExact_data()
{
    QTest::addColumn<float>("rate");
    QTest::addColumn<QString>("expected");
    const QString before = QStringLiteral("50 fps");
    QTest::newRow("29.97") << 29.97F << QStringLiteral("29.97 fps");
    QTest::newRow("29.970001") << 29.970001F << before;
    QTest::newRow("one step below 29.97") << std::nextafter(29.97F, 0.0F) << before;
    QTest::newRow("one step above 60") << std::nextafter(60.0F, 61.0F) << before;
    QTest::newRow("NTSC as a fraction") << 30000.0F / 1001.0F << before;
    QTest::newRow("nothing") << 0.0F << before;
    QTest::newRow("negative") << -30.0F << before;
    QTest::newRow("not a number") << std::numeric_limits<float>::quiet_NaN() << before;
    QTest::newRow("infinite") << std::numeric_limits<float>::infinity() << before;
}

void tst_KVideoSettings::aFrameRateHasToBeExact()
{
    QFETCH(float, rate);
    QFETCH(QString, expected);
    m_page->loadData({H264, 50.0F, 1, 7});
    m_page->loadData({H264, rate, 1, 7});
    QCOMPARE(combo("FrameRate").currentText(), expected);
}

void tst_KVideoSettings::unknownValuesLeaveTheirRows_data()
{
    QTest::addColumn<_VideoAdvanceData>("loaded");
    QTest::addColumn<_VideoAdvanceData>("expected");
    const _VideoAdvanceData before{H264, 30.0F, 1, 8};
    const auto newRow = [](const char* name, const _VideoAdvanceData& loaded,
                           const _VideoAdvanceData& expected) {
        QTest::newRow(name) << loaded << expected;
    };
    newRow("encoder", {0x34363248, 30.0F, 1, 8}, before);
    newRow("frame rate", {H264, 29.0F, 1, 10}, {H264, 30.0F, 1, 10});
    newRow("mode", {H264, 25.0F, 2, 8}, {H264, 25.0F, 1, 8});
    newRow("quality", {H264, 25.0F, 1, 2}, {H264, 25.0F, 1, 8});
    newRow("a percentage as quality", {H264, 30.0F, 1, 50}, before);
    newRow("everything", {0, 1.0F, 0, std::numeric_limits<quint32>::max()}, before);
}

void tst_KVideoSettings::unknownValuesLeaveTheirRows()
{
    QFETCH(_VideoAdvanceData, loaded);
    QFETCH(_VideoAdvanceData, expected);
    m_page->loadData({H264, 30.0F, 1, 8});
    m_page->loadData(loaded);
    QVERIFY(m_page->data() == expected);
}

void tst_KVideoSettings::loadingReportsEachRowThatChanges_data()
{
    QTest::addColumn<_VideoAdvanceData>("loaded");
    QTest::addColumn<int>("reports");
    QTest::newRow("nothing") << _VideoAdvanceData{H264, 12.0F, 1, 7} << 0;
    QTest::newRow("one row") << _VideoAdvanceData{H264, 12.0F, 1, 5} << 1;
    QTest::newRow("two rows") << _VideoAdvanceData{H264, 60.0F, 1, 5} << 2;
    QTest::newRow("what is not offered") << _VideoAdvanceData{1, 61.0F, 2, 2} << 0;
}

void tst_KVideoSettings::loadingReportsEachRowThatChanges()
{
    QFETCH(_VideoAdvanceData, loaded);
    QFETCH(int, reports);
    QSignalSpy changes(m_page, &KVideoSettings::sigParaChange);
    QSignalSpy clicks(m_page, &KVideoSettings::sigBtnClick);
    m_page->loadData(loaded);
    QCOMPARE(changes.count(), reports);
    m_page->loadData(loaded);
    QCOMPARE(changes.count(), reports);
    QVERIFY(clicks.isEmpty());
}

void tst_KVideoSettings::loadsRowsInAFixedOrder()
{
    combo("Encoder").addItem(QStringLiteral("Other"), 2U);
    combo("BitrateMode").addItem(QStringLiteral("Other"), 2U);
    QStringList order;
    for (const char* row : {"Encoder", "FrameRate", "BitrateMode", "Quality"}) {
        connect(&combo(row), QOverload<int>::of(&KdComboBox::currentIndexChanged), this,
                [&order, row] { order.append(QLatin1String(row)); });
    }
    m_page->loadData({2, 60.0F, 2, 10});
    QCOMPARE(order.join(QLatin1Char(' ')), QStringLiteral("FrameRate Encoder BitrateMode Quality"));
}

void tst_KVideoSettings::openingAListIsReported_data()
{
    QTest::addColumn<QByteArray>("row");
    QTest::addColumn<QString>("name");
    QTest::newRow("encoder") << QByteArray("Encoder") << QStringLiteral("video_encoder");
    QTest::newRow("frame rate") << QByteArray("FrameRate") << QStringLiteral("video_frame_rate");
    QTest::newRow("mode") << QByteArray("BitrateMode") << QStringLiteral("video_bitrate_mode");
    QTest::newRow("quality") << QByteArray("Quality") << QStringLiteral("video_quality");
}

void tst_KVideoSettings::openingAListIsReported()
{
    QFETCH(QByteArray, row);
    QFETCH(QString, name);
    m_window->show();
    QSignalSpy clicks(m_page, &KVideoSettings::sigBtnClick);
    QSignalSpy changes(m_page, &KVideoSettings::sigParaChange);
    QTest::mouseClick(&combo(row), Qt::LeftButton);
    QTRY_VERIFY(combo(row).isPopupVisible());
    combo(row).hidePopup();

    QCOMPARE(clicks.count(), 1);
    QCOMPARE(clicks.at(0).at(0).toString(), name);
    QVERIFY(changes.isEmpty());
}

void tst_KVideoSettings::everyChangeIsReported_data()
{
    QTest::addColumn<QByteArray>("row");
    QTest::addColumn<int>("index");
    QTest::newRow("encoder") << QByteArray("Encoder") << -1;
    QTest::newRow("frame rate") << QByteArray("FrameRate") << 4;
    QTest::newRow("mode") << QByteArray("BitrateMode") << -1;
    QTest::newRow("quality") << QByteArray("Quality") << 5;
}

void tst_KVideoSettings::everyChangeIsReported()
{
    QFETCH(QByteArray, row);
    QFETCH(int, index);
    QSignalSpy changes(m_page, &KVideoSettings::sigParaChange);
    combo(row).setCurrentIndex(index);
    QCOMPARE(changes.count(), 1);
    combo(row).setCurrentIndex(index);
    QCOMPARE(changes.count(), 1);
}

void tst_KVideoSettings::newLanguageKeepsSelections()
{
    const _VideoAdvanceData data{H264, 29.97F, 1, 8};
    m_page->loadData(data);
    QSignalSpy changes(m_page, &KVideoSettings::sigParaChange);
    Shouting shouting;
    QCoreApplication::installTranslator(&shouting);
    m_page->RetranslateUi();
    QCoreApplication::removeTranslator(&shouting);

    QVERIFY(m_page->data() == data);
    QVERIFY(changes.isEmpty());
    QCOMPARE(combo("FrameRate").itemText(6), QStringLiteral("[29.97 FPS]"));
    QCOMPARE(combo("FrameRate").count(), 11);
    QCOMPARE(combo("Quality").itemText(4), QStringLiteral("[50%]"));
    QCOMPARE(combo("Quality").count(), 6);
    QCOMPARE(combo("Encoder").accessibleName(), QStringLiteral("[ENCODER]"));
    QVERIFY(combo("BitrateMode").accessibleDescription().startsWith(QStringLiteral("[BITRATE")));
}

void tst_KVideoSettings::languageChangeIsNoticed()
{
    Shouting shouting;
    QCoreApplication::installTranslator(&shouting);
    m_window->show();
    QTRY_COMPARE(combo("Quality").accessibleName(), QStringLiteral("[QUALITY]"));
    QCoreApplication::removeTranslator(&shouting);
    QTRY_COMPARE(combo("Quality").accessibleName(), QStringLiteral("Quality"));
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KVideoSettings>(argc, argv);
}

#include "tst_KVideoSettings.moc"
