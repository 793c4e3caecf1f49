#pragma once

#include "ScriptedEngineState.h"
#include "ScriptedObservers.h"

#include <array>
#include <atomic>

/** What the two scripted recorders have in common: one take, its file, its observers. */
class ScriptedRecorder
{
public:
    explicit ScriptedRecorder(ScriptedEngineState& engine, bool hasFrames);
    virtual ~ScriptedRecorder();

    bool isReleased() const { return m_isReleased; }
    bool isPreviewing() const { return m_isPreviewing; }
    KdVBLMODEL::_KdCaptureStatus status() const { return m_status; }
    KdVBLMODEL::_KdCaptureDevInf selected(KdVBLMODEL::_KdDevType type) const;
    /** As chosen last, empty before. Any thread. */
    QSize pictureSize() const { return {m_width, m_height}; }
    int observerCount() const { return m_observers.count(); }
    int deliver(ScriptedEngineState::Kind kind,
                const std::function<void(ScriptedObservers::Observer&)>& call);

protected:
    template <typename... Arguments>
    void enter(const char* operation, const Arguments&... arguments)
    {
        enterCall(operation, {describe(arguments)...}, {std::any(arguments)...});
    }
    bool succeeds(const char* operation) const;
    bool isStrict() const { return m_engine.script.isStrict; }

    bool beginTake(KdVBLMODEL::_KdDevType neededDevice);
    /** @return whether there was one to pause. */
    bool pauseTake();
    bool resumeTake();
    void endTake();
    void setSwitch(std::size_t number, bool on) { m_switches.at(number - 1) = on; }
    void listDevices(KdVBLMODEL::_KdDevType type, QList<KdVBLMODEL::_KdCaptureDevInf>* devices);
    bool isListed(KdVBLMODEL::_KdDevType type, int index) const;
    void select(KdVBLMODEL::_KdDevType type, int index) { m_selected[type] = index; }
    void setPath(const QString& path) { m_nextPath = path; }
    QString path() const;
    void setPictureSize(QSize size)
    {
        m_width = size.width();
        m_height = size.height();
    }
    void setPreviewing(bool on) { m_isPreviewing = on; }
    KdVBLMODEL::_KdCaptureStatus scriptedStatus() const;
    void markReleased();

    ScriptedEngineState& m_engine;
    ScriptedObservers m_observers;

private:
    void enterCall(const char* operation, const QStringList& texts,
                   std::vector<std::any> arguments);
    bool writeTake() const;
    bool isStrangersFile() const;

    static QString describe(int value) { return QString::number(value); }
    static QString describe(bool value);
    static QString describe(const QString& value) { return value; }
    static QString describe(QSize value);
    static QString describe(const KdVBLMODEL::KdAudioFormat& format);
    static QString describe(const KdVBLMODEL::KdVideoFormat& format);
    static QString describe(ScriptedObservers::Observer* observer);

    const int m_number;
    const bool m_hasFrames;
    std::atomic<bool> m_isReleased{false};
    std::array<std::atomic<bool>, 3> m_switches{};
    std::atomic<int> m_width{0};
    std::atomic<int> m_height{0};
    bool m_isPreviewing = false;
    KdVBLMODEL::_KdCaptureStatus m_status = KdVBLMODEL::fcsNoStart;
    QHash<int, QList<KdVBLMODEL::_KdCaptureDevInf>> m_listed;
    QHash<int, int> m_selected;
    QString m_nextPath;
    QString m_takePath;
};
