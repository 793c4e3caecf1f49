#pragma once

#include <KdVBLModel/KdVBLModelExport.h>

#include <QtGlobal>

namespace KdVBLMODEL {

/** The frame rates a project can have. */
enum class KdFrameRate : int
{
    Unknown,
    Fps23_976,
    Fps24,
    Fps25,
    Fps29_97,
    Fps30,
    Fps48,
    Fps50,
    Fps59_94,
    Fps60,
    Fps120
};

/** Gives a rate as a fraction; 0/0 for Unknown. Any thread. */
KDVBLMODEL_EXPORT void toFrameRate(KdFrameRate rate, qint64& numerator, qint64& denominator);

/** @return the rate that equals the fraction, Unknown when there is none. Any thread. */
KDVBLMODEL_EXPORT KdFrameRate fromFraction(qint64 numerator, qint64 denominator);

} // namespace KdVBLMODEL

/** The open project. GUI thread. */
class KDVBLMODEL_EXPORT IKdProjectManager
{
public:
    static IKdProjectManager* getInstance();

    virtual KdVBLMODEL::KdFrameRate frameRate() const = 0;
    virtual void setFrameRate(KdVBLMODEL::KdFrameRate rate) = 0;

protected:
    IKdProjectManager() = default;
    virtual ~IKdProjectManager() = default;

private:
    Q_DISABLE_COPY(IKdProjectManager)
};
