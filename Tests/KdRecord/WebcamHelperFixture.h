#pragma once

#include <KdRecord/KdWebcamRecorderCodes.h>
#include <KdRecord/KdWebcamRecorderHelper.h>

#include <Support/KdTestCase.h>
#include <Support/ScriptedEngine.h>

#include <functional>
#include <memory>

/** An adapter with a recorder as long as it lives, which notes the responses. */
class ReadyHelper : public KdWebcamRecorderHelper
{
    Q_OBJECT

public:
    ReadyHelper();
    ~ReadyHelper() override;

    using KdWebcamRecorderHelper::previewId;

    void order(int number) { slotWebcamRecorderOrderType(number); }
    QList<QSize> resolutions() const;
    QList<double> frameRates() const;
    /** Since the last call, or since the adapter was made. */
    QVector<int> takeResponses();

private:
    QVector<int> m_responses;
};

/** Base of the adapter's tests: an engine for each, which must get every recorder back. */
class WebcamHelperFixture : public KdTestCase
{
    Q_OBJECT

protected Q_SLOTS:
    void init();
    void cleanup();

protected:
    /** The adapter's log of one level, each as "function: message" with the class left out. */
    QStringList messages(int level) const;
    /** The camera or microphone that the engine lists at that place. */
    static KdVBLMODEL::_KdCaptureDevInf device(KdVBLMODEL::_KdDevType type, int index,
                                               const QString& name);
    /** @return the identifiers that the preview has before the action, and while the engine starts
     * it. */
    QStringList previewIdsOf(ReadyHelper& helper, const std::function<void()>& action);

    std::unique_ptr<ScriptedEngine> m_engine;
    int m_keptRecorders = 0; ///< how many the test leaves to the engine
};
