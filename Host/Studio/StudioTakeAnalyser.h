#pragma once

#include <Studio/StudioMediaProbe.h>
#include <Studio/StudioPeaks.h>

#include <QObject>
#include <QSet>
#include <QString>
#include <QThreadPool>

#include <atomic>

/** Looks into files one after another on a thread of its own. GUI thread; so are the signals. */
class StudioTakeAnalyser : public QObject
{
    Q_OBJECT

public:
    explicit StudioTakeAnalyser(QObject* parent = nullptr);
    /** Drops what is left to do and waits for the step that runs. */
    ~StudioTakeAnalyser() override;

    /** Without effect while the same file waits or is being looked into. */
    void analyse(const QString& path);
    bool isBusy() const { return !m_pending.isEmpty(); }

Q_SIGNALS:
    /** Always comes. */
    void probed(const QString& path, const StudioMediaInfo& info);
    /** Follows for a readable file; empty when its sound could not be decoded. */
    void waveformRead(const QString& path, const StudioPeaks& peaks);

private:
    /** On the worker. */
    void work(const QString& path);

    QThreadPool m_pool;
    QSet<QString> m_pending;
    std::atomic<bool> m_cancelled{false};
};
