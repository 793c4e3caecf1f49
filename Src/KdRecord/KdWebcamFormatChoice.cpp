#include <KdRecord/KdWebcamFormatChoice.h>

#include <QCoreApplication>

#include <algorithm>
#include <cmath>

namespace {

// Less than the difference between 29.97 and 30 frames.
constexpr double kSameRate = 0.001;

template <typename Predicate>
int firstRow(const QList<double>& rates, Predicate matches)
{
    const auto found = std::find_if(rates.begin(), rates.end(), matches);
    return found == rates.end() ? -1 : static_cast<int>(found - rates.begin());
}

} // namespace

QString KdWebcamFormatChoice::sizeText(const QSize& size)
{
    return QStringLiteral("%1x%2").arg(size.width()).arg(size.height());
}

QString KdWebcamFormatChoice::rateText(double rate)
{
    return QCoreApplication::translate("KdWebcamFormatChoice", "%1 fps")
        .arg(QString::number(rate, 'g', 2));
}

QSize KdWebcamFormatChoice::chosenSize(const QSize& stored, const QList<QSize>& offered,
                                       const QSize& current)
{
    return !stored.isEmpty() && offered.contains(stored) ? stored : current;
}

double KdWebcamFormatChoice::chosenRate(double stored, double current)
{
    return stored > 0.0 ? stored : current;
}

int KdWebcamFormatChoice::rateRow(const QList<double>& offered, double rate)
{
    const int row =
        firstRow(offered, [rate](double other) { return std::abs(other - rate) < kSameRate; });
    const QString text = rateText(rate);
    return row >= 0 ? row
                    : firstRow(offered, [&text](double other) { return rateText(other) == text; });
}
