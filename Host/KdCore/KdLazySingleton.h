#pragma once

#include <KdCore/KdLazySingletonManager.h>

#include <QtGlobal>

#include <cstdlib>
#include <mutex>

/**
 * A process-wide object that is made on first use. The lazy-singleton manager destroys it at
 * shutdown, or an at-exit routine when isManaged() of the object answers false. T is
 * default-constructible and a friend of this class when its constructor is private. instance() and
 * release() may be called on any thread.
 */
template <typename T>
/**
 * A process-wide object that is made on first use. The lazy-singleton manager destroys it at
 * shutdown, or an at-exit routine when isManaged() of the object answers false. instance() and
 * release() may be called on any thread.
 * @tparam T the class itself, which derives from this one; default-constructible, and a friend of
 * this class when its constructor is private. Its constructor must not ask for instance().
 */
class KdLazySingleton : public IKdLazySingleton
{
public:
    /**
     * @return the object, made now where there is none; never null, not the caller's, gone after
     * release().
     */
    static T* instance()
    {
        if (T* existing = s_instance.load(std::memory_order_acquire)) {
            return existing;
        }
        const std::lock_guard<std::mutex> lock(s_mutex);
        if (T* existing = s_instance.load(std::memory_order_relaxed)) {
            return existing;
        }
        T* const created = new T;
        s_instance.store(created, std::memory_order_release);
        s_released = false;
        if (created->isManaged()) {
            KdLazySingletonManager::instance()->add(created);
        } else {
            std::atexit(destroyAtExit);
        }
        return created;
    }

    /** @return whether the object was released and not made again since. */
    static bool isReleased()
    {
        const std::lock_guard<std::mutex> lock(s_mutex);
        return s_released;
    }

    ~KdLazySingleton() override = default;

    /** Destroys the object; a later instance() makes a fresh one. */
    void release() override { destroy(); }

    bool isManaged() const override { return true; }

protected:
    KdLazySingleton() = default;

private:
    Q_DISABLE_COPY(KdLazySingleton)

    static void destroyAtExit() { destroy(); }

    static void destroy()
    {
        const std::lock_guard<std::mutex> lock(s_mutex);
        T* const existing = s_instance.load(std::memory_order_relaxed);
        if (!existing) {
            return;
        }
        s_released = true;
        KdLazySingletonManager::instance()->remove(existing);
        s_instance.store(nullptr, std::memory_order_release);
        delete existing;
    }

    static inline std::atomic<T*> s_instance{nullptr};
    static inline std::mutex s_mutex;
    static inline bool s_released = false;
};
