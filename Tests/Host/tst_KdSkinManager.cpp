#include <KdWidgets/KdFramelessDialog.h>
#include <KdWidgets/KdSkinManager.h>
#include <Support/KdTestCase.h>
#include <Support/WidgetLooks.h>

#include <QDirIterator>
#include <QFile>
#include <QPushButton>
#include <QRegularExpression>
#include <QSignalSpy>

#include <memory>

using KdSkin::KdSkinManager;

namespace {

const QString kDark = QStringLiteral("dark");
const QString kLight = QStringLiteral("light");
const QString kOkKey = QStringLiteral("BasicWidget/KPropertyPanel_Btn");

QStringList sheetKeys()
{
    const QString root = QStringLiteral(":/KdSkin/");
    QStringList keys;
    QDirIterator files(root, {QStringLiteral("*.qss")}, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QString path = files.next().mid(root.size());
        keys.append(path.left(path.size() - 4));
    }
    return keys;
}

QString rawSheet(const QString& key)
{
    QFile file(QStringLiteral(":/KdSkin/%1.qss").arg(key));
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

/** Loses another widget as soon as its own style changes. */
class Careless : public QWidget
{
public:
    bool armed = false;
    std::unique_ptr<QWidget> other = std::make_unique<QWidget>();

protected:
    void changeEvent(QEvent* event) override
    {
        if (armed && event->type() == QEvent::StyleChange) {
            other.reset();
        }
        QWidget::changeEvent(event);
    }
};

} // namespace

class tst_KdSkinManager : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void bothSkinsHaveTheColoursOfTheLook_data();
    void bothSkinsHaveTheColoursOfTheLook();
    void numbersAndTokensNameTheSameColours();
    void sheetsHoldNoColourOfTheirOwn();
    void everySheetIsWholeInBothSkins();
    void openDialogChangesItsSkin();
    void widgetStyledByKeyChangesItsSkin();
    void anotherKeyReplacesTheFormer();
    void destroyedWidgetIsForgotten();
    void widgetsMayGoWhileTheSkinChanges();
    void unknownKeyLeavesTheWidgetAsItIs();
    void nullWidgetIsRefused();
    void unknownSkinChangesNothing();
    void checkStateShowsAtOnce();
    void partsWithoutASheetFollowTheSkinToo();

private:
    static KdSkinManager& skin() { return *KdSkinManager::instance(); }
};

void tst_KdSkinManager::init()
{
    KdTestCase::init();
    QVERIFY(skin().setSkin(kDark));
}

void tst_KdSkinManager::bothSkinsHaveTheColoursOfTheLook_data()
{
    QTest::addColumn<QString>("token");
    QTest::addColumn<QColor>("dark");
    QTest::addColumn<QColor>("light");

    const auto row = [](const char* token, QRgb dark, QRgb light) {
        QTest::newRow(token) << QString::fromLatin1(token) << QColor(dark) << QColor(light);
    };
    row("window", 0x1C1E22, 0xF5F6F8);
    row("surface", 0x26292F, 0xFFFFFF);
    row("field", 0x31353C, 0xFFFFFF);
    row("stroke", 0x4A505A, 0xC3C8D0);
    row("text", 0xF1F3F5, 0x1B1E23);
    row("text-quiet", 0xA7AFBA, 0x5A6270);
    row("accent", 0x4C9DFF, 0x0B63CE);
    row("on-accent", 0x0B1626, 0xFFFFFF);
    row("record", 0xFF5A52, 0xC9211B);
    row("good", 0x3FBF7F, 0x16794A);
    row("warn", 0xF2B33D, 0x8A5A00);
}

void tst_KdSkinManager::bothSkinsHaveTheColoursOfTheLook()
{
    QFETCH(QString, token);
    QFETCH(QColor, dark);
    QFETCH(QColor, light);
    QCOMPARE(skin().color(token), dark);
    QVERIFY(skin().setSkin(kLight));
    QCOMPARE(skin().color(token), light);
}

void tst_KdSkinManager::numbersAndTokensNameTheSameColours()
{
    QCOMPARE(skin().color(KdSkin::Stroke), skin().color(QStringLiteral("stroke")));
    QCOMPARE(skin().color(static_cast<KdSkin::SkinColor>(42)), skin().color(KdSkin::Stroke));
    QCOMPARE(skin().color(KdSkin::TextQuiet), skin().color(QStringLiteral("text-quiet")));
    QCOMPARE(skin().color(KdSkin::OnAccent), skin().color(QStringLiteral("on-accent")));
    QVERIFY(!skin().color(QStringLiteral("no such token")).isValid());
    QVERIFY(!skin().color(static_cast<KdSkin::SkinColor>(7)).isValid());
}

void tst_KdSkinManager::sheetsHoldNoColourOfTheirOwn()
{
    const QRegularExpression literal(QStringLiteral("#[0-9a-fA-F]{3,8}\\b|\\brgba?\\("));
    const QStringList keys = sheetKeys();
    QVERIFY(keys.contains(QStringLiteral("Application")));
    for (const QString& key : keys) {
        const auto found = literal.match(rawSheet(key));
        QVERIFY2(!found.hasMatch(), qPrintable(key + QLatin1Char(' ') + found.captured()));
    }
}

void tst_KdSkinManager::everySheetIsWholeInBothSkins()
{
    const QRegularExpression resource(QStringLiteral(":/[^) \"]+"));
    const QStringList keys = sheetKeys();
    const QStringList skins = skin().skins();
    for (const QString& name : skins) {
        QVERIFY(skin().setSkin(name));
        for (const QString& key : keys) {
            const QString sheet = skin().styleSheet(key);
            QVERIFY2(!sheet.isEmpty() && !sheet.contains(QLatin1String("@{")), qPrintable(key));
            auto files = resource.globalMatch(sheet);
            while (files.hasNext()) {
                const QString file = files.next().captured();
                QVERIFY2(QFile::exists(file), qPrintable(file));
            }
        }
    }
}

void tst_KdSkinManager::openDialogChangesItsSkin()
{
    KdFramelessDialog dialog;
    dialog.setContentWidget(new QWidget);
    dialog.resize(200, 200);
    dialog.show();
    QVERIFY(QTest::qWaitForWindowExposed(&dialog));
    QCOMPARE(WidgetLooks::colorAt(dialog, {100, 100}), skin().color(KdSkin::Window));
    QCOMPARE(WidgetLooks::colorAt(dialog, {4, 20}), skin().color(KdSkin::Surface));

    QSignalSpy changed(&skin(), &KdSkinManager::skinChanged);
    QVERIFY(skin().setSkin(kLight));
    QCOMPARE(changed.count(), 1);
    QVERIFY(dialog.isVisible());
    QCOMPARE(WidgetLooks::colorAt(dialog, {100, 100}), QColor(0xF5, 0xF6, 0xF8));
    QCOMPARE(WidgetLooks::colorAt(dialog, {4, 20}), QColor(0xFF, 0xFF, 0xFF));
}

void tst_KdSkinManager::widgetStyledByKeyChangesItsSkin()
{
    QPushButton button;
    QVERIFY(skin().applyStyleSheet(&button, kOkKey, 0));
    const QString dark = button.styleSheet();
    QCOMPARE(dark, skin().styleSheet(kOkKey));
    QPushButton recorder;
    const QString recorderKey = QStringLiteral("BasicWidget/KAudioCapture_RecorderButton");
    QVERIFY(skin().applyStyleSheet(&recorder, recorderKey, 0));
    const QString darkRecorder = recorder.styleSheet();

    QVERIFY(skin().setSkin(kLight));
    QCOMPARE(recorder.styleSheet(), skin().styleSheet(recorderKey));
    QVERIFY(recorder.styleSheet() != darkRecorder);
}

void tst_KdSkinManager::anotherKeyReplacesTheFormer()
{
    QPushButton button;
    QVERIFY(skin().applyStyleSheet(&button, kOkKey, 0));
    const QString key = QStringLiteral("BasicWidget/KAudioCapture_ButtonRefresh");
    QVERIFY(skin().applyStyleSheet(&button, key, 0));
    QVERIFY(skin().setSkin(kLight));
    QCOMPARE(button.styleSheet(), skin().styleSheet(key));
}

void tst_KdSkinManager::destroyedWidgetIsForgotten()
{
    auto gone = std::make_unique<QPushButton>();
    QVERIFY(skin().applyStyleSheet(gone.get(), kOkKey, 0));
    gone.reset();
    QVERIFY(skin().setSkin(kLight));
    QCOMPARE(skin().skin(), kLight);
}

void tst_KdSkinManager::widgetsMayGoWhileTheSkinChanges()
{
    Careless first;
    Careless second;
    for (Careless* careless : {&first, &second}) {
        QVERIFY(skin().applyStyleSheet(careless->other.get(), kOkKey, 0));
        QVERIFY(skin().applyStyleSheet(careless, kOkKey, 0));
        careless->ensurePolished();
        careless->armed = true;
    }
    QVERIFY(skin().setSkin(kLight));
    QVERIFY(!first.other && !second.other);
    QCOMPARE(first.styleSheet(), skin().styleSheet(kOkKey));
}

void tst_KdSkinManager::unknownKeyLeavesTheWidgetAsItIs()
{
    QPushButton button;
    button.setStyleSheet(QStringLiteral("QPushButton { margin: 1px }"));
    expectLog(QStringLiteral("There is no style sheet 'NoArea/NoName'"));
    QVERIFY(!skin().applyStyleSheet(&button, QStringLiteral("NoArea/NoName"), 0));
    QCOMPARE(button.styleSheet(), QStringLiteral("QPushButton { margin: 1px }"));
    QVERIFY(skin().styleSheet(QStringLiteral("NoArea/NoName")).isEmpty());
}

void tst_KdSkinManager::nullWidgetIsRefused()
{
    expectLog(QStringLiteral("No widget for the style sheet 'BasicWidget/KPropertyPanel_Btn'"));
    QVERIFY(!skin().applyStyleSheet(nullptr, kOkKey, 0));
}

void tst_KdSkinManager::unknownSkinChangesNothing()
{
    QSignalSpy changed(&skin(), &KdSkinManager::skinChanged);
    expectLog(QStringLiteral("There is no skin 'sepia'"));
    QVERIFY(!skin().setSkin(QStringLiteral("sepia")));
    QCOMPARE(skin().skin(), kDark);
    QVERIFY(changed.isEmpty());
}

void tst_KdSkinManager::checkStateShowsAtOnce()
{
    QWidget window;
    auto* mark = new QWidget(&window);
    mark->setAttribute(Qt::WA_StyledBackground);
    mark->setGeometry(0, 0, 20, 20);
    mark->setStyleSheet(
        QStringLiteral("QWidget[checkState=\"checked\"] { background: #00ff00 }"
                       "QWidget[checkState=\"unchecked\"] { background: #0000ff }"));
    window.show();
    KdSkinManager::setCheckState(mark, true);
    QCOMPARE(mark->property("checkState").toString(), QStringLiteral("checked"));
    QCOMPARE(WidgetLooks::colorAt(*mark, {10, 10}), QColor(Qt::green));
    KdSkinManager::setCheckState(mark, false);
    QCOMPARE(mark->property("checkState").toString(), QStringLiteral("unchecked"));
    QCOMPARE(WidgetLooks::colorAt(*mark, {10, 10}), QColor(Qt::blue));
}

void tst_KdSkinManager::partsWithoutASheetFollowTheSkinToo()
{
    QCOMPARE(QApplication::palette().color(QPalette::Window), skin().color(KdSkin::Window));
    QCOMPARE(QApplication::palette().color(QPalette::Disabled, QPalette::Text).alpha(), 102);
    QVERIFY(skin().setSkin(kLight));
    QCOMPARE(QApplication::palette().color(QPalette::Base), skin().color(KdSkin::Field));
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdSkinManager>(argc, argv);
}

#include "tst_KdSkinManager.moc"
