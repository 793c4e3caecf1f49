#include <KdVBLModel/KdBackgroundEffect.h>

#include <KdVBLModel/KdBackgroundPaint.h>
#include <KdVBLModel/KdMaskWorker.h>
#include <KdVBLModel/KdPersonMask.h>

#include <KdCore/KdBaseLog.h>

#include <opencv2/imgproc.hpp>

namespace {

class PersonFinder : public KdMaskWorker::Finder
{
public:
    cv::Mat maskOf(const cv::Mat& picture, double seconds) override
    {
        return m_person.update(picture, seconds);
    }

private:
    KdPersonMask m_person;
};

cv::Mat scaled(const cv::Mat& frame, cv::Size size)
{
    cv::Mat small;
    cv::resize(frame, small, size, 0, 0, cv::INTER_AREA);
    cv::Mat opaque;
    cv::cvtColor(small, opaque, cv::COLOR_BGRA2BGR);
    return opaque;
}

bool canFindFaces()
{
    if (KdFaceFinder().isUsable()) {
        return true;
    }
    KdBaseLog::write(KdBaseLog::Info,
                     {"Host/KdVBLModel/KdBackgroundEffect", "KdBackgroundEffect::isAvailable"},
                     "Backgrounds cannot be treated: OpenCV's description of a face is missing.");
    return false;
}

} // namespace

class KdBackgroundEffect::Private
{
public:
    void treat(cv::Mat& frame, Mode mode);

    KdMaskWorker worker{[] { return std::make_unique<PersonFinder>(); }};

private:
    cv::Mat maskFor(const cv::Mat& frame, cv::Size size);

    cv::Size m_frameSize;
};

/** @return all background until there is a mask. */
cv::Mat KdBackgroundEffect::Private::maskFor(const cv::Mat& frame, cv::Size size)
{
    if (frame.size() != m_frameSize) {
        m_frameSize = frame.size();
        worker.reset();
    }
    if (worker.wants()) {
        worker.give(scaled(frame, KdPersonMask::pictureSize(frame.size())));
    }
    const cv::Mat mask = worker.newest();
    return mask.size() == size ? mask : cv::Mat::zeros(size, CV_32F);
}

void KdBackgroundEffect::Private::treat(cv::Mat& frame, Mode mode)
{
    const cv::Size size = KdPersonMask::maskSize(frame.size());
    const cv::Mat mask = maskFor(frame, size);
    const cv::Mat small = scaled(frame, size);
    const KdMatte matte(small, mask);
    if (mode == KdVBLMODEL::fcbmRemove) {
        KdBackgroundPaint::remove(frame, matte);
    } else {
        KdBackgroundPaint::blur(frame, small, matte);
    }
}

bool KdBackgroundEffect::isAvailable()
{
    static const bool answer = canFindFaces();
    return answer;
}

KdBackgroundEffect::KdBackgroundEffect() : m_p(std::make_unique<Private>()) {}

KdBackgroundEffect::~KdBackgroundEffect() = default;

void KdBackgroundEffect::apply(Mode mode, uchar* argb, int width, int height, int stride)
{
    const bool isTreatment = mode == KdVBLMODEL::fcbmRemove || mode == KdVBLMODEL::fcbmBlur;
    if (!isTreatment || !argb || width <= 0 || height <= 0 || stride / 4 < width ||
        !isAvailable()) {
        return;
    }
    cv::Mat frame(height, width, CV_8UC4, argb, static_cast<std::size_t>(stride));
    m_p->treat(frame, mode);
}

void KdBackgroundEffect::reset()
{
    m_p->worker.reset();
}

bool KdBackgroundEffect::waitForMask(std::chrono::milliseconds patience) const
{
    return m_p->worker.waitForMask(patience);
}
