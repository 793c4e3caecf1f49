#include "DrawnPerson.h"

#include <KdVBLModel/KdPersonMask.h>
#include <Support/KdTestCase.h>

#include <opencv2/imgproc.hpp>

#include <cmath>

namespace {

constexpr double kInterval = 1.0 / 15.0;

cv::Mat pictureOf(const cv::Mat& frame)
{
    cv::Mat colours;
    cv::cvtColor(frame, colours, cv::COLOR_BGRA2BGR);
    cv::Mat picture;
    cv::resize(colours, picture, KdPersonMask::pictureSize(frame.size()), 0, 0, cv::INTER_AREA);
    return picture;
}

/** What mask and truth have in common, as a share of what either has. */
double overlap(const cv::Mat& mask, const cv::Mat& truth)
{
    cv::Mat wide;
    cv::resize(mask, wide, truth.size(), 0, 0, cv::INTER_LINEAR);
    const cv::Mat found = wide > 0.5F;
    return static_cast<double>(cv::countNonZero(found & truth)) / cv::countNonZero(found | truth);
}

double swayAt(int i)
{
    return 0.5 + 0.03 * std::sin(i * 0.4);
}

/** Shows a person who sways. @return the last mask. */
cv::Mat showPerson(KdPersonMask& mask, const DrawnPerson& person, int pictures)
{
    cv::Mat last;
    for (int i = 0; i < pictures; ++i) {
        const cv::Mat frame = person.frame(swayAt(i), static_cast<unsigned>(i));
        last = mask.update(pictureOf(frame), i * kInterval);
    }
    return last;
}

} // namespace

class tst_KdPersonMask : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void sizesFollowTheFrame_data();
    void sizesFollowTheFrame();
    void personIsFoundInTheFirstPicture();
    void personIsFoundWhileMoving();
    void lightThatChangesDoesNotMatter();
    void personWhoMovesAsideIsFollowed();
    void maskOfAStillPersonIsSteady();
    void emptyRoomIsAllBackground();
    void personWhoHidesTheFaceIsKept();
    void personWhoLeavesIsGone();
    void personWhoComesBackIsFound();
    void changeOfSizeBeginsAnew();
    void samePicturesGiveTheSameMasks();
    void nobodyIsFoundWithoutTheDescriptionOfAFace();
};

void tst_KdPersonMask::sizesFollowTheFrame_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("height");
    QTest::addColumn<int>("maskHeight");
    QTest::newRow("wide") << 1280 << 720 << 90;
    QTest::newRow("old") << 640 << 480 << 120;
    QTest::newRow("portrait") << 720 << 1280 << 284;
    QTest::newRow("dot") << 1 << 1 << 160;
    QTest::newRow("line") << 1920 << 1 << 8;
    QTest::newRow("pole") << 1 << 1080 << 320;
}

void tst_KdPersonMask::sizesFollowTheFrame()
{
    QFETCH(int, width);
    QFETCH(int, height);
    QTEST(KdPersonMask::maskSize({width, height}).height, "maskHeight");
    QCOMPARE(KdPersonMask::maskSize({width, height}).width, 160);
    QVERIFY(KdPersonMask::pictureSize({width, height}) ==
            KdPersonMask::maskSize({width, height}) * 2);
}

void tst_KdPersonMask::personIsFoundInTheFirstPicture()
{
    const DrawnPerson person;
    KdPersonMask mask;
    QVERIFY(overlap(mask.update(pictureOf(person.frame()), 0.0), person.truth()) > 0.85);
}

void tst_KdPersonMask::personIsFoundWhileMoving()
{
    const DrawnPerson person;
    KdPersonMask mask;
    for (int i = 0; i < 30; ++i) {
        const cv::Mat found = mask.update(
            pictureOf(person.frame(swayAt(i), static_cast<unsigned>(i))), i * kInterval);
        QVERIFY(overlap(found, person.truth(swayAt(i))) > 0.85);
    }
}

void tst_KdPersonMask::lightThatChangesDoesNotMatter()
{
    const DrawnPerson person;
    KdPersonMask mask;
    showPerson(mask, person, 20);
    for (int i = 20; i < 30; ++i) {
        const cv::Mat brighter =
            pictureOf(person.frame(swayAt(i), static_cast<unsigned>(i))) * 1.12;
        const cv::Mat found = mask.update(brighter, i * kInterval);
        QVERIFY(overlap(found, person.truth(swayAt(i))) > 0.85);
    }
}

void tst_KdPersonMask::personWhoMovesAsideIsFollowed()
{
    const DrawnPerson person;
    KdPersonMask mask;
    showPerson(mask, person, 10);
    cv::Mat found;
    for (int i = 10; i < 25; ++i) {
        const double aside = 0.5 + 0.015 * (i - 10);
        found =
            mask.update(pictureOf(person.frame(aside, static_cast<unsigned>(i))), i * kInterval);
    }
    QVERIFY(overlap(found, person.truth(0.5 + 0.015 * 14)) > 0.85);
}

void tst_KdPersonMask::maskOfAStillPersonIsSteady()
{
    const DrawnPerson person;
    KdPersonMask mask;
    cv::Mat before = showPerson(mask, person, 10);
    double flicker = 0.0;
    for (int i = 10; i < 40; ++i) {
        const cv::Mat frame = person.frame(swayAt(9), static_cast<unsigned>(i));
        const cv::Mat now = mask.update(pictureOf(frame), i * kInterval);
        const double change = cv::mean(cv::abs(now - before))[0];
        QVERIFY(change < 0.02);
        flicker += change / 30.0;
        before = now;
    }
    QVERIFY(flicker < 0.002);
}

void tst_KdPersonMask::emptyRoomIsAllBackground()
{
    const DrawnPerson person;
    KdPersonMask mask;
    for (int i = 0; i < 20; ++i) {
        const cv::Mat found =
            mask.update(pictureOf(person.room(static_cast<unsigned>(i))), i * kInterval);
        QCOMPARE(cv::countNonZero(found), 0);
    }
}

void tst_KdPersonMask::personWhoHidesTheFaceIsKept()
{
    const DrawnPerson person;
    KdPersonMask mask;
    showPerson(mask, person, 15);
    cv::Mat found;
    for (int i = 15; i < 15 * 8; ++i) {
        cv::Mat frame = person.frame(swayAt(i), static_cast<unsigned>(i));
        const cv::Point face(cvRound(swayAt(i) * frame.cols), cvRound(0.42 * frame.rows));
        cv::circle(frame, face, frame.rows / 7, cv::Scalar(140, 170, 220, 255), cv::FILLED);
        found = mask.update(pictureOf(frame), i * kInterval);
    }
    QVERIFY(overlap(found, person.truth(swayAt(15 * 8 - 1))) > 0.75);
}

void tst_KdPersonMask::personWhoLeavesIsGone()
{
    const DrawnPerson person;
    KdPersonMask mask;
    showPerson(mask, person, 15);
    cv::Mat found;
    for (int i = 15; i < 15 * 10; ++i) {
        found = mask.update(pictureOf(person.room(static_cast<unsigned>(i))), i * kInterval);
    }
    QCOMPARE(cv::countNonZero(found), 0);
}

void tst_KdPersonMask::personWhoComesBackIsFound()
{
    const DrawnPerson person;
    KdPersonMask mask;
    cv::Mat found;
    for (int i = 0; i < 15 * 3; ++i) {
        mask.update(pictureOf(person.room(static_cast<unsigned>(i))), i * kInterval);
    }
    for (int i = 15 * 3; i < 15 * 4; ++i) {
        found = mask.update(pictureOf(person.frame(swayAt(i), static_cast<unsigned>(i))),
                            i * kInterval);
    }
    QVERIFY(overlap(found, person.truth(swayAt(15 * 4 - 1))) > 0.85);
}

void tst_KdPersonMask::changeOfSizeBeginsAnew()
{
    const DrawnPerson wide;
    const DrawnPerson old({640, 480});
    KdPersonMask mask;
    showPerson(mask, wide, 5);
    const cv::Mat found = mask.update(pictureOf(old.frame()), 1.0);
    QCOMPARE(found.rows, 120);
    QVERIFY(overlap(found, old.truth()) > 0.8);
}

void tst_KdPersonMask::samePicturesGiveTheSameMasks()
{
    const DrawnPerson person;
    KdPersonMask one;
    KdPersonMask other;
    const cv::Mat a = showPerson(one, person, 10);
    const cv::Mat b = showPerson(other, person, 10);
    QCOMPARE(cv::countNonZero(a != b), 0);
}

void tst_KdPersonMask::nobodyIsFoundWithoutTheDescriptionOfAFace()
{
    QVERIFY(KdFaceFinder().isUsable());
    QVERIFY(!KdFaceFinder(temporaryPath(QStringLiteral("nowhere"))).isUsable());
    const DrawnPerson person;
    KdPersonMask mask(temporaryPath(QStringLiteral("nowhere")));
    QCOMPARE(cv::countNonZero(showPerson(mask, person, 5)), 0);
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdPersonMask>(argc, argv);
}

#include "tst_KdPersonMask.moc"
