#include "WebcamHelperFixture.h"

using namespace KdVBLMODEL;

ReadyHelper::ReadyHelper() : KdWebcamRecorderHelper(nullptr)
{
    connect(this, &KdWebcamRecorderHelper::sigRecorderResponeType, this,
            [this](int code) { m_responses.append(code); });
    order(KdWebcamOrder::Init);
}

ReadyHelper::~ReadyHelper()
{
    order(KdWebcamOrder::Uninit);
}

QList<QSize> ReadyHelper::resolutions() const
{
    QList<QSize> list{QSize(1, 1)};
    getValidResolutions(list);
    return list;
}

QList<double> ReadyHelper::frameRates() const
{
    QList<double> list{1.0};
    getValidFrameRates(list);
    return list;
}

QVector<int> ReadyHelper::takeResponses()
{
    QVector<int> taken;
    taken.swap(m_responses);
    return taken;
}

void WebcamHelperFixture::init()
{
    KdTestCase::init();
    m_engine = std::make_unique<ScriptedEngine>();
    m_keptRecorders = 0;
}

void WebcamHelperFixture::cleanup()
{
    const int alive = m_engine->alive();
    m_engine.reset();
    KdTestCase::cleanup();
    QCOMPARE(alive, m_keptRecorders);
}

QStringList WebcamHelperFixture::messages(int level) const
{
    const QString scope = QStringLiteral("KdWebcamRecorderHelper::");
    QStringList result;
    for (const KdLogRecord& record : logRecords()) {
        const QString function = QString::fromUtf8(record.function);
        if (record.level == level && record.file == "Src/KdRecord/KdWebcamRecorderHelper" &&
            record.line > 0 && function.startsWith(scope)) {
            result.append(function.mid(scope.size()) + QStringLiteral(": ") + record.message);
        }
    }
    return result;
}

_KdCaptureDevInf WebcamHelperFixture::device(_KdDevType type, int index, const QString& name)
{
    return {type, index, name, name + QStringLiteral("-id")};
}

QStringList WebcamHelperFixture::previewIdsOf(ReadyHelper& helper,
                                              const std::function<void()>& action)
{
    QStringList ids{helper.previewId()};
    m_engine->during("startPreview", [&] { ids.append(helper.previewId()); });
    action();
    m_engine->during("startPreview", nullptr);
    return ids;
}
