#include "Support/KdTestCase.h"
#include "Support/TestFiles.h"

#include <Studio/StudioTakeDelegate.h>
#include <Studio/StudioTakeLibrary.h>
#include <Studio/StudioTakeModel.h>

#include <QAbstractItemModelTester>
#include <QListView>
#include <QSignalSpy>

class tst_StudioTakeModel : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void rowsFollowTheLibrary();
    void waveformsAreKeptByPath();
    void thumbnailIsKeptByPathAndPainted();
    void brokenTakesAreDescribed_data();
    void brokenTakesAreDescribed();
    void deviceNamesAreShownAsPlainText_data();
    void deviceNamesAreShownAsPlainText();
    void everyStateIsPainted_data();
    void everyStateIsPainted();

private:
    StudioTake makeTake(const QString& name) const
    {
        StudioTake take;
        take.path = temporaryPath(QStringLiteral("takes/") + name);
        TestFiles::write(take.path, "sound");
        take.deviceName = QStringLiteral("Mic");
        take.durationMs = 65000;
        take.state = StudioTake::State::Good;
        return take;
    }
};

void tst_StudioTakeModel::rowsFollowTheLibrary()
{
    StudioTakeLibrary library;
    library.open(temporaryPath(QStringLiteral("takes")));
    StudioTakeModel model(&library);
    const QAbstractItemModelTester tester(&model,
                                          QAbstractItemModelTester::FailureReportingMode::QtTest);
    QSignalSpy changed(&model, &QAbstractItemModel::dataChanged);

    library.add(makeTake(QStringLiteral("a.m4a")));
    library.add(makeTake(QStringLiteral("b.m4a")));
    QCOMPARE(model.rowCount(), 2);
    QCOMPARE(model.index(1).data().toString(), QStringLiteral("b"));
    QCOMPARE(model.index(0).data(Qt::AccessibleTextRole).toString(),
             QStringLiteral("a, 1:05  \u00b7  Mic"));
    library.setUnreadable(library.takes().at(0).path, QStringLiteral("x"));
    QCOMPARE(changed.count(), 1);
    library.remove(QString(library.takes().at(0).path));
    QCOMPARE(model.rowCount(), 1);
    QCOMPARE(model.index(0).data().toString(), QStringLiteral("b"));
    library.open(temporaryPath(QStringLiteral("other")));
    QCOMPARE(model.rowCount(), 0);
    QVERIFY(!model.data(QModelIndex(), Qt::DisplayRole).isValid());
}

void tst_StudioTakeModel::waveformsAreKeptByPath()
{
    StudioTakeLibrary library;
    library.open(temporaryPath(QStringLiteral("takes")));
    StudioTakeModel model(&library);
    const StudioTake take = makeTake(QStringLiteral("a.m4a"));
    library.add(take);
    QSignalSpy changed(&model, &QAbstractItemModel::dataChanged);
    model.setPeaks(take.path, StudioPeaks(5));
    model.setPeaks(QStringLiteral("/unlisted"), StudioPeaks(3));
    QCOMPARE(changed.count(), 1);
    QCOMPARE(model.index(0).data(StudioTakeModel::PeaksRole).value<StudioPeaks>().size(), 5);
    QCOMPARE(model.peaks(take.path).size(), 5);
}

void tst_StudioTakeModel::thumbnailIsKeptByPathAndPainted()
{
    StudioTakeLibrary library;
    library.open(temporaryPath(QStringLiteral("takes")));
    StudioTakeModel model(&library);
    library.add(makeTake(QStringLiteral("a.mp4")));
    QListView list;
    list.setModel(&model);
    list.setItemDelegate(new StudioTakeDelegate(&list));
    list.resize(300, 100);
    QSignalSpy changed(&model, &QAbstractItemModel::dataChanged);
    QImage green(160, 90, QImage::Format_RGB32);
    green.fill(Qt::green);
    model.setThumbnail(library.takes().at(0).path, green);
    QCOMPARE(changed.count(), 1);
    QCOMPARE(model.index(0).data(StudioTakeModel::ThumbnailRole).value<QImage>(), green);
    const QPoint middle = list.visualRect(model.index(0)).topLeft() + QPoint(56, 32);
    QCOMPARE(list.viewport()->grab().toImage().pixelColor(middle), QColor(Qt::green));
    library.open(temporaryPath(QStringLiteral("other")));
    QVERIFY(model.thumbnail(temporaryPath(QStringLiteral("takes/a.mp4"))).isNull());
}

void tst_StudioTakeModel::brokenTakesAreDescribed_data()
{
    QTest::addColumn<int>("state");
    QTest::addColumn<QString>("text");
    using State = StudioTake::State;
    QTest::newRow("missing") << static_cast<int>(State::Missing)
                             << QStringLiteral("The file is missing");
    QTest::newRow("unreadable") << static_cast<int>(State::Unreadable)
                                << QStringLiteral("The file cannot be read");
    QTest::newRow("good") << static_cast<int>(State::Good) << QStringLiteral("0:05");
}

void tst_StudioTakeModel::brokenTakesAreDescribed()
{
    QFETCH(int, state);
    QFETCH(QString, text);
    StudioTake take;
    take.durationMs = 5000;
    take.state = static_cast<StudioTake::State>(state);
    QCOMPARE(describeTake(take), text);
}

void tst_StudioTakeModel::deviceNamesAreShownAsPlainText_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("shown");
    const QString prefix = QStringLiteral("0:05  \u00b7  ");
    QTest::newRow("HTML") << QStringLiteral("<b>Mic</b>") << prefix + QStringLiteral("<b>Mic</b>");
    QTest::newRow("placeholder") << QStringLiteral("Mic %1 %2")
                                 << prefix + QStringLiteral("Mic %1 %2");
    QTest::newRow("line breaks") << QStringLiteral("Mic\nof\r\nAnna")
                                 << prefix + QStringLiteral("Mic of Anna");
    QTest::newRow("right to left") << QString::fromUtf8("\u05de\u05d9\u05e7")
                                   << prefix + QString::fromUtf8("\u05de\u05d9\u05e7");
    QTest::newRow("only blanks") << QStringLiteral("  ") << QStringLiteral("0:05");
}

void tst_StudioTakeModel::deviceNamesAreShownAsPlainText()
{
    QFETCH(QString, name);
    QFETCH(QString, shown);
    StudioTake take;
    take.durationMs = 5000;
    take.deviceName = name;
    QCOMPARE(describeTake(take), shown);
}

void tst_StudioTakeModel::everyStateIsPainted_data()
{
    QTest::addColumn<int>("state");
    using State = StudioTake::State;
    QTest::newRow("checking") << static_cast<int>(State::Checking);
    QTest::newRow("good") << static_cast<int>(State::Good);
    QTest::newRow("missing") << static_cast<int>(State::Missing);
    QTest::newRow("unreadable") << static_cast<int>(State::Unreadable);
}

void tst_StudioTakeModel::everyStateIsPainted()
{
    QFETCH(int, state);
    StudioTakeLibrary library;
    library.open(temporaryPath(QStringLiteral("takes")));
    StudioTakeModel model(&library);
    QListView list;
    list.setModel(&model);
    list.setItemDelegate(new StudioTakeDelegate(&list));
    list.resize(320, 80);
    const QImage empty = list.grab().toImage();
    StudioTake take = makeTake(QString(200, QLatin1Char('n')) + QStringLiteral(".m4a"));
    take.state = static_cast<StudioTake::State>(state);
    take.deviceName = QString(4000, QLatin1Char('x'));
    library.add(take);
    model.setPeaks(take.path, StudioPeaks(300, {0.9F, 0.4F}));
    list.setCurrentIndex(model.index(0));
    QVERIFY(list.grab().toImage() != empty);
    QCOMPARE(list.sizeHintForRow(0), 64);
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_StudioTakeModel>(argc, argv);
}

#include "tst_StudioTakeModel.moc"
