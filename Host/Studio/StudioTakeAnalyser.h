#pragma once

#include <Studio/StudioMediaProbe.h>
#include <Studio/StudioPeaks.h>
#include <Studio/StudioWorkGate.h>
#include <Studio/StudioWorker.h>

#include <QImage>
#include <QObject>
#include <QSet>
#include <QString>

#include <functional>

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
    /** Reads the clip's first picture, large enough to be played upon. */
    void readPoster(const QString& path);
    bool isBusy() const { return m_jobs > 0; }

    /** Nothing new is begun until release(), and what runs stops at its next step: a recorder needs
     * the machine for itself. Never waits. */
    void hold();
    void release();
    bool isHeld() const { return m_gate.isHeld(); }

Q_SIGNALS:
    /** Always comes. */
    void probed(const QString& path, const StudioMediaInfo& info);
    /** Follows for a readable file with a moving picture; not when none could be decoded. */
    void thumbnailRead(const QString& path, const QImage& thumbnail);
    /** Follows for a readable file; empty when its sound could not be decoded, or there is none. */
    void waveformRead(const QString& path, const StudioPeaks& peaks);
    /** Answers readPoster(); null when there is none. */
    void posterRead(const QString& path, const QImage& poster);
    /** Everything that was asked for is done. */
    void idle();

private:
    /** On the worker. */
    void work(const QString& path);
    void workOnContent(const QString& path, const StudioMediaInfo& info);
    void start(const std::function<void()>& job);
    void finishJob();

    int m_jobs = 0;
    QSet<QString> m_pending;
    StudioWorkGate m_gate;
    StudioWorker m_worker;
};
