#include <KdCore/KdLazySingleton.h>
#include <Support/KdTestCase.h>

#include <QProcess>

#include <cstdio>
#include <cstring>
#include <future>
#include <vector>

namespace {

QStringList s_destroyed;

class Managed : public KdLazySingleton<Managed>
{
public:
    ~Managed() override { s_destroyed.append(QStringLiteral("Managed")); }
    int value = 1;

private:
    friend class KdLazySingleton<Managed>;
    Managed() { ++s_made; }

public:
    static inline std::atomic<int> s_made{0};
};

class Other : public KdLazySingleton<Other>
{
public:
    Other() = default;
    ~Other() override { s_destroyed.append(QStringLiteral("Other")); }
};

class OutlivesMain : public KdLazySingleton<OutlivesMain>
{
public:
    OutlivesMain() = default;
    ~OutlivesMain() override { std::fputs("destroyed at exit\n", stdout); }
    bool isManaged() const override { return false; }
};

int childMain()
{
    OutlivesMain::instance();
    KdLazySingletonManager::instance()->releaseAll();
    std::fputs("main is over\n", stdout);
    return 0;
}

} // namespace

class tst_KdLazySingleton : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void everyCallAnswersTheSameObject();
    void manyThreadsMakeOneObject();
    void releaseDestroysAndALaterCallMakesAFreshOne();
    void releasingTwiceIsHarmless();
    void managerReleasesLastMadeFirst();
    void managerForgetsWhatWasReleased();
    void unmanagedObjectGoesAtExit();
};

void tst_KdLazySingleton::init()
{
    KdTestCase::init();
    KdLazySingletonManager::instance()->releaseAll();
    s_destroyed.clear();
    Managed::s_made = 0;
}

void tst_KdLazySingleton::everyCallAnswersTheSameObject()
{
    QVERIFY(Managed::instance());
    QCOMPARE(Managed::instance(), Managed::instance());
    QCOMPARE(Managed::s_made.load(), 1);
    QVERIFY(!Managed::isReleased());
}

void tst_KdLazySingleton::manyThreadsMakeOneObject()
{
    std::promise<void> start;
    const std::shared_future<void> started = start.get_future().share();
    std::vector<std::future<Managed*>> results;
    results.reserve(8);
    for (int i = 0; i < 8; ++i) {
        results.push_back(std::async(std::launch::async, [started] {
            started.wait();
            return Managed::instance();
        }));
    }
    start.set_value();
    for (auto& result : results) {
        QCOMPARE(result.get(), Managed::instance());
    }
    QCOMPARE(Managed::s_made.load(), 1);
}

void tst_KdLazySingleton::releaseDestroysAndALaterCallMakesAFreshOne()
{
    Managed::instance()->value = 2;
    Managed::instance()->release();
    QCOMPARE(s_destroyed, QStringList(QStringLiteral("Managed")));
    QVERIFY(Managed::isReleased());
    QCOMPARE(Managed::instance()->value, 1);
    QVERIFY(!Managed::isReleased());
    QCOMPARE(Managed::s_made.load(), 2);
}

void tst_KdLazySingleton::releasingTwiceIsHarmless()
{
    Managed::instance();
    KdLazySingletonManager::instance()->releaseAll();
    KdLazySingletonManager::instance()->releaseAll();
    QCOMPARE(s_destroyed.size(), 1);
}

void tst_KdLazySingleton::managerReleasesLastMadeFirst()
{
    Managed::instance();
    Other::instance();
    KdLazySingletonManager::instance()->releaseAll();
    QCOMPARE(s_destroyed, (QStringList{QStringLiteral("Other"), QStringLiteral("Managed")}));
    QVERIFY(Managed::isReleased());
    QVERIFY(Other::isReleased());
}

void tst_KdLazySingleton::managerForgetsWhatWasReleased()
{
    Managed::instance()->release();
    KdLazySingletonManager::instance()->remove(nullptr);
    KdLazySingletonManager::instance()->add(nullptr);
    KdLazySingletonManager::instance()->releaseAll();
    QCOMPARE(s_destroyed.size(), 1);
}

void tst_KdLazySingleton::unmanagedObjectGoesAtExit()
{
    QProcess child;
    child.start(QCoreApplication::applicationFilePath(), {QStringLiteral("--child")});
    QVERIFY(child.waitForFinished());
    QCOMPARE(child.exitStatus(), QProcess::NormalExit);
    QCOMPARE(child.readAllStandardOutput(), QByteArray("main is over\ndestroyed at exit\n"));
}

int main(int argc, char** argv)
{
    if (argc > 1 && std::strcmp(argv[1], "--child") == 0) {
        return childMain();
    }
    return KdTest::run<tst_KdLazySingleton>(argc, argv);
}

#include "tst_KdLazySingleton.moc"
