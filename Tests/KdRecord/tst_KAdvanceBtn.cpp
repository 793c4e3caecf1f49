#include <KdRecord/KAdvanceBtn.h>
#include <KdWidgets/KdSkinManager.h>

#include <Support/KdTestCase.h>

#include <QCursor>
#include <QPainter>
#include <QSignalSpy>

#include <memory>

namespace {

KdSkin::KdSkinManager& skin()
{
    return *KdSkin::KdSkinManager::instance();
}

QImage chevron(const char* state)
{
    return QImage(QStringLiteral(":/Resource/MediaLibraryView/icon16_green_chevron_right-%1.png")
                      .arg(QLatin1String(state)));
}

} // namespace

class tst_KAdvanceBtn : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void everyStateHasItsChevron_data();
    void everyStateHasItsChevron();
    void showsItsTextInTheColourOfTheSkin_data();
    void showsItsTextInTheColourOfTheSkin();
    void disabledTextIsFaint();
    void hoverAndPressHaveAGroundOfTheirOwn();
    void pointerMakesItHover();
    void keyboardFocusIsVisible();
    void isReachedAndPressedByKeyboard();
    void clickingReportsOnce();
    void disabledIgnoresClicksAndKeys();
    void isAsWideAsItsText();
    void tooLongTextIsElided();

private:
    QImage shown() const { return m_window->grab(m_button->geometry()).toImage(); }
    QImage shownChevron() const;
    QColor ground() const { return shown().pixelColor(4, m_button->height() / 2); }
    bool hasColor(const QColor& color) const;

    std::unique_ptr<QWidget> m_window;
    KAdvanceBtn* m_button = nullptr;
};

void tst_KAdvanceBtn::init()
{
    KdTestCase::init();
    skin().setSkin(QStringLiteral("dark"));
    QCursor::setPos(5, 5);
    m_window = std::make_unique<QWidget>();
    m_window->setGeometry(400, 300, 300, 200);
    m_window->setFocusPolicy(Qt::StrongFocus);
    m_button = new KAdvanceBtn(m_window.get());
    m_button->setText(QStringLiteral("Advanced"));
    m_button->move(50, 50);
    m_button->resize(m_button->sizeHint());
    m_window->show();
    m_window->setFocus();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
}

void tst_KAdvanceBtn::cleanup()
{
    m_window.reset();
    KdTestCase::cleanup();
}

QImage tst_KAdvanceBtn::shownChevron() const
{
    return shown().copy(m_button->width() - 22, 4, 16, 16);
}

bool tst_KAdvanceBtn::hasColor(const QColor& color) const
{
    const QImage image = shown();
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixelColor(x, y).rgb() == color.rgb()) {
                return true;
            }
        }
    }
    return false;
}

void tst_KAdvanceBtn::everyStateHasItsChevron_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<QString>("groundToken");

    QTest::newRow("normal") << QByteArray("normal") << QStringLiteral("window");
    QTest::newRow("hover") << QByteArray("hover") << QStringLiteral("field");
    QTest::newRow("pressed") << QByteArray("pressed") << QStringLiteral("stroke");
    QTest::newRow("disabled") << QByteArray("disable") << QStringLiteral("window");
}

void tst_KAdvanceBtn::everyStateHasItsChevron()
{
    QFETCH(QByteArray, file);
    QFETCH(QString, groundToken);
    QVERIFY(!chevron(file).isNull());
    m_button->setAttribute(Qt::WA_UnderMouse, file == "hover");
    m_button->setDown(file == "pressed");
    m_button->setEnabled(file != "disable");

    QImage expected(16, 16, QImage::Format_ARGB32_Premultiplied);
    expected.fill(skin().color(groundToken));
    QPainter(&expected).drawImage(0, 0, chevron(file));
    QCOMPARE(shownChevron().convertToFormat(QImage::Format_RGB32),
             expected.convertToFormat(QImage::Format_RGB32));
}

void tst_KAdvanceBtn::showsItsTextInTheColourOfTheSkin_data()
{
    QTest::addColumn<QString>("name");

    QTest::newRow("dark") << QStringLiteral("dark");
    QTest::newRow("light") << QStringLiteral("light");
}

void tst_KAdvanceBtn::showsItsTextInTheColourOfTheSkin()
{
    QFETCH(QString, name);
    QVERIFY(skin().setSkin(name));
    QVERIFY(hasColor(skin().color(KdSkin::Text)));
    skin().setSkin(QStringLiteral("dark"));
}

void tst_KAdvanceBtn::disabledTextIsFaint()
{
    m_button->setEnabled(false);
    QVERIFY(!hasColor(skin().color(KdSkin::Text)));
}

void tst_KAdvanceBtn::hoverAndPressHaveAGroundOfTheirOwn()
{
    QCOMPARE(ground(), skin().color(KdSkin::Window));
    m_button->setAttribute(Qt::WA_UnderMouse);
    QCOMPARE(ground(), skin().color(KdSkin::Field));
    m_button->setDown(true);
    QCOMPARE(ground(), skin().color(KdSkin::Stroke));
}

void tst_KAdvanceBtn::pointerMakesItHover()
{
    const QImage normal = shown();
    QCursor::setPos(m_button->mapToGlobal(m_button->rect().center()));
    QTRY_VERIFY(shown() != normal);
    QCursor::setPos(5, 5);
    QTRY_COMPARE(shown(), normal);
}

void tst_KAdvanceBtn::keyboardFocusIsVisible()
{
    QCOMPARE(m_button->focusPolicy(), Qt::TabFocus);
    m_button->setFocus(Qt::TabFocusReason);
    const QImage image = shown();
    const QColor accent = skin().color(KdSkin::Accent);
    for (const int y : {0, 1, image.height() - 2, image.height() - 1}) {
        QCOMPARE(image.pixelColor(image.width() / 2, y), accent);
    }
    for (const int x : {0, 1, image.width() - 2, image.width() - 1}) {
        QCOMPARE(image.pixelColor(x, image.height() / 2), accent);
    }
    m_window->setFocus();
    QVERIFY(!hasColor(accent));
}

void tst_KAdvanceBtn::isReachedAndPressedByKeyboard()
{
    QSignalSpy clicked(m_button, &QAbstractButton::clicked);
    QTest::keyClick(m_window.get(), Qt::Key_Tab);
    QVERIFY(m_button->hasFocus());
    QTest::keyClick(m_button, Qt::Key_Space);
    QCOMPARE(clicked.count(), 1);
}

void tst_KAdvanceBtn::clickingReportsOnce()
{
    QSignalSpy clicked(m_button, &QAbstractButton::clicked);
    QTest::mouseClick(m_button, Qt::LeftButton);
    QCOMPARE(clicked.count(), 1);
    QVERIFY(!m_button->isChecked());
}

void tst_KAdvanceBtn::disabledIgnoresClicksAndKeys()
{
    QSignalSpy clicked(m_button, &QAbstractButton::clicked);
    m_button->setEnabled(false);
    QTest::mouseClick(m_button, Qt::LeftButton);
    QTest::keyClick(m_window.get(), Qt::Key_Tab);
    QVERIFY(!m_button->hasFocus());
    QVERIFY(clicked.isEmpty());
}

void tst_KAdvanceBtn::isAsWideAsItsText()
{
    const int narrow = m_button->sizeHint().width();
    const QString longer = QStringLiteral("Erweiterte Einstellungen");
    m_button->setText(longer);
    const QFontMetrics metrics(m_button->font());
    QCOMPARE(m_button->sizeHint().width() - narrow,
             metrics.horizontalAdvance(longer) -
                 metrics.horizontalAdvance(QStringLiteral("Advanced")));
    QCOMPARE(m_button->sizeHint().height(), 24);
    QCOMPARE(m_button->minimumSizeHint(), m_button->sizeHint());
}

void tst_KAdvanceBtn::tooLongTextIsElided()
{
    const QImage before = shownChevron();
    m_button->setText(QStringLiteral("A text that is much too long for this button"));
    QCOMPARE(shownChevron(), before);
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KAdvanceBtn>(argc, argv);
}

#include "tst_KAdvanceBtn.moc"
