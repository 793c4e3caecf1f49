#include "KdLazySingletonManager.h"

#include <algorithm>
#include <mutex>
#include <vector>

IKdLazySingleton::~IKdLazySingleton() = default;

class KdLazySingletonManager::Private
{
public:
    IKdLazySingleton* takeLast()
    {
        const std::lock_guard<std::mutex> lock(mutex);
        if (singletons.empty()) {
            return nullptr;
        }
        IKdLazySingleton* const last = singletons.back();
        singletons.pop_back();
        return last;
    }

    std::mutex mutex;
    std::vector<IKdLazySingleton*> singletons;
};

KdLazySingletonManager* KdLazySingletonManager::instance()
{
    // Never destroyed: singletons that an at-exit routine destroys still come here after static
    // objects have gone.
    static KdLazySingletonManager* const manager = new KdLazySingletonManager;
    return manager;
}

KdLazySingletonManager::KdLazySingletonManager() : d(std::make_unique<Private>()) {}

KdLazySingletonManager::~KdLazySingletonManager() = default;

void KdLazySingletonManager::add(IKdLazySingleton* singleton)
{
    const std::lock_guard<std::mutex> lock(d->mutex);
    const auto found = std::find(d->singletons.begin(), d->singletons.end(), singleton);
    if (singleton && found == d->singletons.end()) {
        d->singletons.push_back(singleton);
    }
}

void KdLazySingletonManager::remove(IKdLazySingleton* singleton)
{
    const std::lock_guard<std::mutex> lock(d->mutex);
    const auto found = std::find(d->singletons.begin(), d->singletons.end(), singleton);
    if (found != d->singletons.end()) {
        d->singletons.erase(found);
    }
}

void KdLazySingletonManager::releaseAll()
{
    // Released without the lock, since each removes itself from here; one that is made meanwhile
    // goes as well.
    while (IKdLazySingleton* const last = d->takeLast()) {
        last->release();
    }
}
