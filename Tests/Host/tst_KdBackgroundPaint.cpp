#include <KdVBLModel/KdBackgroundPaint.h>
#include <Support/KdTestCase.h>

#include <opencv2/imgproc.hpp>

namespace {

const cv::Size kFrame(640, 360);
const cv::Size kSmall(160, 90);
const cv::Vec4b kPersonColour(40, 40, 220, 255);

/** A red person, the right half of the picture, before black and white stripes. */
cv::Mat stripes()
{
    cv::Mat frame(kFrame, CV_8UC4);
    for (int y = 0; y < frame.rows; ++y) {
        for (int x = 0; x < frame.cols; ++x) {
            const uchar light = y / 6 % 2 == 0 ? 255 : 0;
            frame.at<cv::Vec4b>(y, x) =
                x >= kFrame.width / 2 ? kPersonColour : cv::Vec4b(light, light, light, 255);
        }
    }
    return frame;
}

cv::Mat smallOf(const cv::Mat& frame)
{
    cv::Mat colours;
    cv::cvtColor(frame, colours, cv::COLOR_BGRA2BGR);
    cv::Mat small;
    cv::resize(colours, small, kSmall, 0, 0, cv::INTER_AREA);
    return small;
}

/** @param late how many of the mask's pixels its border lies beside the person's. */
cv::Mat maskOfRightHalf(int late)
{
    cv::Mat mask = cv::Mat::zeros(kSmall, CV_32F);
    mask.colRange(kSmall.width / 2 + late, kSmall.width) = 1.0F;
    return mask;
}

cv::Mat alphaOf(const cv::Mat& frame)
{
    cv::Mat alpha;
    cv::extractChannel(frame, alpha, 3);
    return alpha;
}

int changedBytes(const cv::Mat& a, const cv::Mat& b)
{
    const cv::Mat changed = a != b;
    return cv::countNonZero(changed.clone().reshape(1));
}

} // namespace

class tst_KdBackgroundPaint : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void borderOfAnOldMaskMovesToThePerson_data();
    void borderOfAnOldMaskMovesToThePerson();
    void removedBackgroundIsTransparentBlack();
    void rimIsSoft();
    void blurTakesTheDetailAndKeepsThePerson();
    void personDoesNotRunIntoTheBlur();
    void everythingIsBackgroundForAnEmptyMask();
    void everythingIsPersonForAFullMask();
};

void tst_KdBackgroundPaint::borderOfAnOldMaskMovesToThePerson_data()
{
    QTest::addColumn<int>("late");
    QTest::newRow("in time") << 0;
    QTest::newRow("late") << 2;
    QTest::newRow("early") << -2;
}

void tst_KdBackgroundPaint::borderOfAnOldMaskMovesToThePerson()
{
    QFETCH(int, late);
    cv::Mat frame = stripes();
    KdBackgroundPaint::remove(frame, KdMatte(smallOf(frame), maskOfRightHalf(late)));
    const cv::Mat kept = alphaOf(frame) > 127;
    const int right = cv::countNonZero(kept.colRange(kFrame.width / 2, kFrame.width));
    const int left = cv::countNonZero(kept.colRange(0, kFrame.width / 2));
    const int half = kFrame.area() / 2;
    const int wrong = half - right + left;
    const int wrongInMask = qAbs(late) * kFrame.width / kSmall.width * kFrame.height;
    QVERIFY(wrong <= wrongInMask * 2 / 3);
}

void tst_KdBackgroundPaint::removedBackgroundIsTransparentBlack()
{
    cv::Mat frame = stripes();
    KdBackgroundPaint::remove(frame, KdMatte(smallOf(frame), maskOfRightHalf(0)));
    QCOMPARE(cv::countNonZero(frame.colRange(0, 200).clone().reshape(1)), 0);
    const cv::Mat person = frame.colRange(440, kFrame.width);
    QVERIFY(cv::countNonZero(alphaOf(person) == 255) == static_cast<int>(person.total()));
    QVERIFY(person.at<cv::Vec4b>(100, 100) == kPersonColour);
}

void tst_KdBackgroundPaint::rimIsSoft()
{
    cv::Mat frame(kFrame, CV_8UC4, cv::Scalar(90, 90, 90, 255)); // no edge to hold on to
    KdBackgroundPaint::remove(frame, KdMatte(smallOf(frame), maskOfRightHalf(0)));
    const cv::Mat alpha = alphaOf(frame);
    int steps = 0;
    for (int x = 1; x < alpha.cols; ++x) {
        const int step = alpha.at<uchar>(180, x) - alpha.at<uchar>(180, x - 1);
        QVERIFY(step >= 0 && step < 64);
        steps += step > 0 ? 1 : 0;
    }
    QVERIFY(steps > 5);
}

void tst_KdBackgroundPaint::blurTakesTheDetailAndKeepsThePerson()
{
    const cv::Mat before = stripes();
    cv::Mat frame = before.clone();
    const cv::Mat small = smallOf(frame);
    KdBackgroundPaint::blur(frame, small, KdMatte(small, maskOfRightHalf(0)));
    cv::Scalar mean;
    cv::Scalar spread;
    cv::meanStdDev(frame.colRange(0, 280), mean, spread);
    QVERIFY(spread[0] < 10.0); // 127 before
    QVERIFY(qAbs(mean[0] - 127.5) < 5.0);
    QCOMPARE(changedBytes(frame.colRange(440, 640), before.colRange(440, 640)), 0);
    QVERIFY(cv::countNonZero(alphaOf(frame) == 255) == kFrame.area());
}

void tst_KdBackgroundPaint::personDoesNotRunIntoTheBlur()
{
    cv::Mat frame = stripes();
    const cv::Mat small = smallOf(frame);
    KdBackgroundPaint::blur(frame, small, KdMatte(small, maskOfRightHalf(0)));
    for (int x = 200; x < 310; ++x) {
        const auto& colour = frame.at<cv::Vec4b>(180, x);
        QVERIFY(qAbs(colour[2] - colour[0]) < 12); // the stripes are grey, the person is red
    }
}

void tst_KdBackgroundPaint::everythingIsBackgroundForAnEmptyMask()
{
    const cv::Mat empty = cv::Mat::zeros(kSmall, CV_32F);
    cv::Mat removed = stripes();
    KdBackgroundPaint::remove(removed, KdMatte(smallOf(removed), empty));
    QCOMPARE(cv::countNonZero(removed.reshape(1)), 0);
}

void tst_KdBackgroundPaint::everythingIsPersonForAFullMask()
{
    const cv::Mat full = cv::Mat::ones(kSmall, CV_32F);
    const cv::Mat before = stripes();
    cv::Mat frame = before.clone();
    const cv::Mat small = smallOf(frame);
    KdBackgroundPaint::blur(frame, small, KdMatte(small, full));
    KdBackgroundPaint::remove(frame, KdMatte(small, full));
    QCOMPARE(changedBytes(frame, before), 0);
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdBackgroundPaint>(argc, argv);
}

#include "tst_KdBackgroundPaint.moc"
