#include <KdVBLModel/KdCameraFormats.h>

#include <KdVBLModel/KdGst.h>

#include <algorithm>
#include <cmath>

namespace {

constexpr double kUsualRate = 30.0;
constexpr double kSameRate = 0.005;
constexpr int kLargestSide = 8192; // beyond it no encoder goes
/** A range that ends beyond this has no end that was ever tried. */
constexpr int kLargestBelievedSide = 4096;
constexpr double kLargestBelievedRate = 240.0;

constexpr QSize kUsualSizes[] = {{160, 120},  {176, 144},  {320, 180},   {320, 240},  {352, 288},
                                 {424, 240},  {480, 270},  {640, 360},   {640, 480},  {800, 600},
                                 {848, 480},  {960, 540},  {1024, 576},  {1024, 768}, {1280, 720},
                                 {1280, 960}, {1600, 900}, {1600, 1200}, {1920, 1080}};
constexpr int kUsualRates[] = {5, 10, 15, 20, 24, 25, 30, 50, 60};

struct Rate
{
    int numerator;
    int denominator;
};

/** The numbers that a field has, a fixed one, a list or a range. */
class Numbers
{
public:
    explicit Numbers(const GValue* value) : m_value(value) {}

    /** Only those that are named one by one. */
    QList<int> listed() const
    {
        QList<int> numbers;
        if (m_value && G_VALUE_HOLDS_INT(m_value)) {
            numbers.append(g_value_get_int(m_value));
        }
        for (guint i = 0; isList() && i < gst_value_list_get_size(m_value); ++i) {
            numbers += Numbers(gst_value_list_get_value(m_value, i)).listed();
        }
        return numbers;
    }

    bool contains(int number) const
    {
        if (!isRange()) {
            return listed().contains(number);
        }
        const int smallest = gst_value_get_int_range_min(m_value);
        const int step = std::max(1, gst_value_get_int_range_step(m_value));
        return number >= smallest && number <= largest() && (number - smallest) % step == 0;
    }

    int largest() const
    {
        if (isRange()) {
            return gst_value_get_int_range_max(m_value);
        }
        const QList<int> numbers = listed();
        return numbers.isEmpty() ? 0 : *std::max_element(numbers.begin(), numbers.end());
    }

    bool isRange() const { return m_value && GST_VALUE_HOLDS_INT_RANGE(m_value); }

private:
    bool isList() const { return m_value && GST_VALUE_HOLDS_LIST(m_value); }

    const GValue* m_value;
};

bool isShown(QSize size)
{
    return size.width() > 0 && size.height() > 0 && size.width() <= kLargestSide &&
           size.height() <= kLargestSide;
}

QList<QSize> sizesOf(const GstStructure* structure)
{
    const Numbers widths(gst_structure_get_value(structure, "width"));
    const Numbers heights(gst_structure_get_value(structure, "height"));
    QList<QSize> sizes;
    if (!widths.isRange() && !heights.isRange()) {
        for (const int width : widths.listed()) {
            for (const int height : heights.listed()) {
                sizes.append(QSize(width, height));
            }
        }
        return sizes;
    }
    for (const QSize& usual : kUsualSizes) {
        if (widths.contains(usual.width()) && heights.contains(usual.height())) {
            sizes.append(usual);
        }
    }
    const QSize largest(widths.largest(), heights.largest());
    const bool isBelieved = std::max(largest.width(), largest.height()) <= kLargestBelievedSide;
    if ((isBelieved || sizes.isEmpty()) && !sizes.contains(largest)) {
        sizes.append(largest);
    }
    return sizes;
}

double perSecond(const GValue* fraction)
{
    return double(gst_value_get_fraction_numerator(fraction)) /
           double(gst_value_get_fraction_denominator(fraction));
}

QList<Rate> ratesWithin(const GValue* range)
{
    const GValue* slowest = gst_value_get_fraction_range_min(range);
    const GValue* fastest = gst_value_get_fraction_range_max(range);
    QList<Rate> rates;
    for (const int usual : kUsualRates) {
        if (usual >= perSecond(slowest) && usual <= perSecond(fastest)) {
            rates.append({usual, 1});
        }
    }
    if (perSecond(fastest) <= kLargestBelievedRate) {
        rates.append({gst_value_get_fraction_numerator(fastest),
                      gst_value_get_fraction_denominator(fastest)});
    }
    return rates;
}

/** A camera that does not say how many pictures it gives has the rate 0. */
QList<Rate> ratesOf(const GValue* value)
{
    if (value && GST_VALUE_HOLDS_FRACTION(value)) {
        return {
            {gst_value_get_fraction_numerator(value), gst_value_get_fraction_denominator(value)}};
    }
    if (value && GST_VALUE_HOLDS_FRACTION_RANGE(value)) {
        return ratesWithin(value);
    }
    QList<Rate> rates;
    if (value && GST_VALUE_HOLDS_LIST(value)) {
        for (guint i = 0; i < gst_value_list_get_size(value); ++i) {
            rates += ratesOf(gst_value_list_get_value(value, i));
        }
    }
    return rates.isEmpty() ? QList<Rate>{{0, 1}} : rates;
}

bool comesBefore(double left, double right)
{
    const bool isLeftUsual = left <= kUsualRate + kSameRate;
    const bool isRightUsual = right <= kUsualRate + kSameRate;
    if (isLeftUsual != isRightUsual) {
        return isLeftUsual;
    }
    return isLeftUsual ? left > right : left < right;
}

qint64 areaOf(QSize size)
{
    return qint64(size.width()) * size.height();
}

} // namespace

double KdCameraMode::frameRate() const
{
    return rateNumerator > 0 && rateDenominator > 0 ? double(rateNumerator) / rateDenominator
                                                    : kUsualRate;
}

KdCameraFormats::KdCameraFormats(const GstCaps* caps)
{
    const guint count = caps && !gst_caps_is_any(caps) ? gst_caps_get_size(caps) : 0;
    for (guint i = 0; i < count; ++i) {
        const GstCapsFeatures* features = gst_caps_get_features(caps, i);
        const bool isInMemory = !features || gst_caps_features_is_equal(
                                                 features, GST_CAPS_FEATURES_MEMORY_SYSTEM_MEMORY);
        if (isInMemory) {
            addStructure(gst_caps_get_structure(caps, i));
        }
    }
}

void KdCameraFormats::addStructure(const GstStructure* structure)
{
    const bool isJpeg = gst_structure_has_name(structure, "image/jpeg");
    if (!isJpeg && !gst_structure_has_name(structure, "video/x-raw")) {
        return;
    }
    const QList<Rate> rates = ratesOf(gst_structure_get_value(structure, "framerate"));
    const QList<QSize> sizes = sizesOf(structure);
    for (const QSize& size : sizes) {
        for (const Rate& rate : rates) {
            add({size, rate.numerator, rate.denominator, isJpeg});
        }
    }
}

void KdCameraFormats::add(const KdCameraMode& mode)
{
    if (isShown(mode.size) && !m_modes.contains(mode)) {
        m_modes.append(mode);
    }
}

QList<QSize> KdCameraFormats::resolutions() const
{
    QList<QSize> sizes;
    for (const KdCameraMode& mode : m_modes) {
        if (!sizes.contains(mode.size)) {
            sizes.append(mode.size);
        }
    }
    std::stable_sort(sizes.begin(), sizes.end(), [](QSize left, QSize right) {
        return areaOf(left) != areaOf(right) ? areaOf(left) > areaOf(right)
                                             : left.width() > right.width();
    });
    return sizes;
}

QList<double> KdCameraFormats::frameRates(QSize resolution) const
{
    QList<double> rates;
    for (const KdCameraMode& mode : m_modes) {
        const double rate = mode.frameRate();
        const bool isListed = std::any_of(rates.begin(), rates.end(), [rate](double other) {
            return std::abs(rate - other) < kSameRate;
        });
        if (mode.size == resolution && !isListed) {
            rates.append(rate);
        }
    }
    std::sort(rates.begin(), rates.end(), comesBefore);
    return rates;
}

std::optional<KdCameraMode> KdCameraFormats::mode(QSize resolution, double frameRate) const
{
    std::optional<KdCameraMode> best;
    double nearest = 0.0;
    for (const KdCameraMode& mode : m_modes) {
        if (mode.size != resolution) {
            continue;
        }
        const double distance = std::abs(mode.frameRate() - frameRate);
        const bool isNearer = !best || distance < nearest - kSameRate;
        const bool isRawInstead =
            best && best->isJpeg && !mode.isJpeg && distance < nearest + kSameRate;
        if (isNearer || isRawInstead) {
            best = mode;
            nearest = distance;
        }
    }
    return best;
}

GstCaps* KdCameraFormats::createCaps(const KdCameraMode& mode)
{
    GstCaps* caps =
        gst_caps_new_simple(mode.isJpeg ? "image/jpeg" : "video/x-raw", "width", G_TYPE_INT,
                            mode.size.width(), "height", G_TYPE_INT, mode.size.height(), nullptr);
    if (mode.rateNumerator > 0) {
        gst_caps_set_simple(caps, "framerate", GST_TYPE_FRACTION, mode.rateNumerator,
                            mode.rateDenominator, nullptr);
    }
    return caps;
}
