#pragma once

#include <KdVBLModel/KdVBLModelExport.h>

#include <QtGlobal>

namespace KdVBLMODEL {

/** The frame rates a project can have. */
enum class KdFrameRate : int
{
    Unknown,   ///< a project without a rate; 0/0
    Fps23_976, ///< 24000/1001
    Fps24,     ///< 24/1
    Fps25,     ///< 25/1
    Fps29_97,  ///< 30000/1001
    Fps30,     ///< 30/1
    Fps48,     ///< 48/1
    Fps50,     ///< 50/1
    Fps59_94,  ///< 60000/1001
    Fps60,     ///< 60/1
    Fps120     ///< 120/1
};

/**
 * Gives a rate as a fraction of frames per second. Any thread.
 * @param rate the rate; one that is none of the enumeration counts as Unknown.
 * @param[out] numerator 0 for Unknown.
 * @param[out] denominator 0 for Unknown.
 */
KDVBLMODEL_EXPORT void toFrameRate(KdFrameRate rate, qint64& numerator, qint64& denominator);

/**
 * Any thread.
 * @param numerator of the frames per second, in lowest terms or not.
 * @param denominator 0 and negative numbers have no rate.
 * @return the rate that equals the fraction exactly, Unknown when there is none.
 */
KDVBLMODEL_EXPORT KdFrameRate fromFraction(qint64 numerator, qint64 denominator);

} // namespace KdVBLMODEL

/**
 * The open project, as far as recording has to know it: times are told to the host in frames of it.
 * GUI thread.
 */
class KDVBLMODEL_EXPORT IKdProjectManager
{
public:
    /** @return the project; never null, lives until the process ends. */
    static IKdProjectManager* getInstance();

    /** @return the project's frame rate; KdFrameRate::Fps30 until one is set. */
    virtual KdVBLMODEL::KdFrameRate frameRate() const = 0;
    /**
     * For the host, at every change of project. A recording dialog asks for the rate when it is
     * made and keeps to that.
     * @param rate the project's frame rate.
     */
    virtual void setFrameRate(KdVBLMODEL::KdFrameRate rate) = 0;

protected:
    /** There is one project, made by getInstance(). */
    IKdProjectManager() = default;
    /** Nobody deletes it. */
    virtual ~IKdProjectManager() = default;

private:
    Q_DISABLE_COPY(IKdProjectManager)
};
