#include "KdProject.h"

#include <array>
#include <numeric>

namespace {

using KdVBLMODEL::KdFrameRate;

struct Fraction
{
    KdFrameRate rate;
    qint64 numerator;
    qint64 denominator;
};

constexpr std::array<Fraction, 11> kFractions{{
    {KdFrameRate::Unknown, 0, 0},
    {KdFrameRate::Fps23_976, 24000, 1001},
    {KdFrameRate::Fps24, 24, 1},
    {KdFrameRate::Fps25, 25, 1},
    {KdFrameRate::Fps29_97, 30000, 1001},
    {KdFrameRate::Fps30, 30, 1},
    {KdFrameRate::Fps48, 48, 1},
    {KdFrameRate::Fps50, 50, 1},
    {KdFrameRate::Fps59_94, 60000, 1001},
    {KdFrameRate::Fps60, 60, 1},
    {KdFrameRate::Fps120, 120, 1},
}};

class Project final : public IKdProjectManager
{
public:
    KdFrameRate frameRate() const override { return m_frameRate; }
    void setFrameRate(KdFrameRate rate) override { m_frameRate = rate; }

private:
    KdFrameRate m_frameRate = KdFrameRate::Fps30;
};

} // namespace

void KdVBLMODEL::toFrameRate(KdFrameRate rate, qint64& numerator, qint64& denominator)
{
    numerator = 0;
    denominator = 0;
    for (const Fraction& fraction : kFractions) {
        if (fraction.rate == rate) {
            numerator = fraction.numerator;
            denominator = fraction.denominator;
        }
    }
}

KdFrameRate KdVBLMODEL::fromFraction(qint64 numerator, qint64 denominator)
{
    if (numerator <= 0 || denominator <= 0) {
        return KdFrameRate::Unknown;
    }
    // In lowest terms, so that comparing needs no product that could overflow.
    const qint64 divisor = std::gcd(numerator, denominator);
    for (const Fraction& fraction : kFractions) {
        if (fraction.numerator == numerator / divisor &&
            fraction.denominator == denominator / divisor) {
            return fraction.rate;
        }
    }
    return KdFrameRate::Unknown;
}

IKdProjectManager* IKdProjectManager::getInstance()
{
    static Project project;
    return &project;
}
