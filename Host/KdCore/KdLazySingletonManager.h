#pragma once

#include <KdCore/KdCoreExport.h>

#include <atomic>
#include <memory>

/** What the lazy-singleton manager knows of an object. */
class KDCORE_EXPORT IKdLazySingleton
{
public:
    /** Makes nothing known: KdLazySingletonManager::add() does. */
    IKdLazySingleton() = default;
    /** Comes by release(). */
    virtual ~IKdLazySingleton();
    /** Destroys the object. */
    virtual void release() = 0;
    /** @return whether the manager owns the object. */
    virtual bool isManaged() const = 0;

private:
    IKdLazySingleton(const IKdLazySingleton&) = delete;
    IKdLazySingleton& operator=(const IKdLazySingleton&) = delete;
};

/**
 * Owns the lazy singletons that want it; releases them, last made first, in releaseAll(). All
 * operations may be called on any thread.
 */
class KDCORE_EXPORT KdLazySingletonManager
{
public:
    /** @return the manager; never null, lives until the process ends. */
    static KdLazySingletonManager* instance();

    /**
     * @param singleton the manager's from now on; null and one that is known already change
     * nothing.
     */
    void add(IKdLazySingleton* singleton);
    /** @param singleton forgotten and not released; one that is not known changes nothing. */
    void remove(IKdLazySingleton* singleton);
    /**
     * Releases all singletons, those too that are made meanwhile. Called by the host at shutdown,
     * when its windows are gone and QCoreApplication still lives. A singleton that is asked for
     * later is made anew.
     */
    void releaseAll();

private:
    KdLazySingletonManager();
    ~KdLazySingletonManager();
    class Private;
    std::unique_ptr<Private> d;
};
