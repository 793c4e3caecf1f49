#pragma once

#include <KdCore/KdCoreExport.h>

#include <atomic>
#include <memory>

/** What the lazy-singleton manager knows of an object. */
class KDCORE_EXPORT IKdLazySingleton
{
public:
    IKdLazySingleton() = default;
    virtual ~IKdLazySingleton();
    /** Destroys the object. */
    virtual void release() = 0;
    /** @return whether the manager owns the object. */
    virtual bool isManaged() const = 0;

private:
    IKdLazySingleton(const IKdLazySingleton&) = delete;
    IKdLazySingleton& operator=(const IKdLazySingleton&) = delete;
};

/** Owns the lazy singletons that want it; releases them, last made first, in releaseAll().
 * Thread-safe. */
class KDCORE_EXPORT KdLazySingletonManager
{
public:
    static KdLazySingletonManager* instance();

    void add(IKdLazySingleton* singleton);
    void remove(IKdLazySingleton* singleton);
    /** Called by the host at shutdown, while QCoreApplication still lives. */
    void releaseAll();

private:
    KdLazySingletonManager();
    ~KdLazySingletonManager();
    class Private;
    std::unique_ptr<Private> d;
};
