#include <KdWidgets/KdLabel.h>
#include <KdWidgets/KdSkinManager.h>
#include <Support/KdTestCase.h>
#include <Support/WidgetLooks.h>

#include <memory>

class tst_KdLabel : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void textThatFitsHasNoTip();
    void textThatDoesNotFitIsElidedAndShownAsATip();
    void aTipOfItsOwnGoesFirst();
    void markupIsShownLetterByLetter();
    void lineBreaksDoNotMakeItHigher();
    void layoutMayMakeItNarrow();
    void longTextDoesNotMakeAWindowWide();
    void wrappedTextIsNotElided();
    void captionIsQuiet_data();
    void captionIsQuiet();
    void disabledTextIsQuiet();

private:
    KdLabel* add(const QString& text, int width);

    std::unique_ptr<QWidget> m_window;
};

void tst_KdLabel::init()
{
    KdTestCase::init();
    KdSkin::KdSkinManager::instance()->setSkin(QStringLiteral("dark"));
    m_window = std::make_unique<QWidget>();
    m_window->setGeometry(400, 300, 400, 200);
    m_window->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
}

void tst_KdLabel::cleanup()
{
    m_window.reset();
    KdTestCase::cleanup();
}

KdLabel* tst_KdLabel::add(const QString& text, int width)
{
    auto* label = new KdLabel(text, m_window.get());
    label->setGeometry(10, 10, width, 20);
    label->show();
    return label;
}

void tst_KdLabel::textThatFitsHasNoTip()
{
    KdLabel* label = add(QStringLiteral("Audio Device"), 200);
    QVERIFY(label->overflowText().isEmpty());
    QVERIFY(WidgetLooks::toolTip(*label).isEmpty());
}

void tst_KdLabel::textThatDoesNotFitIsElidedAndShownAsATip()
{
    KdLabel* label = add(QStringLiteral("A microphone with a long name"), 80);
    QCOMPARE(label->overflowText(), QStringLiteral("A microphone with a long name"));
    QCOMPARE(WidgetLooks::toolTip(*label),
             QStringLiteral("<qt>A microphone with a long name</qt>"));
    const QString shown = label->fontMetrics().elidedText(label->text(), Qt::ElideRight, 80);
    QVERIFY(shown.endsWith(QChar(0x2026)));
    KdLabel* asShown = add(shown, 80);
    QCOMPARE(WidgetLooks::image(*label), WidgetLooks::image(*asShown));
}

void tst_KdLabel::aTipOfItsOwnGoesFirst()
{
    KdLabel* label = add(QStringLiteral("A microphone with a long name"), 80);
    label->setToolTip(QStringLiteral("<i>own</i>"));
    QCOMPARE(WidgetLooks::toolTip(*label), QStringLiteral("<qt>&lt;i&gt;own&lt;/i&gt;</qt>"));
}

void tst_KdLabel::markupIsShownLetterByLetter()
{
    KdLabel* bold = add(QStringLiteral("<b>x</b>"), 200);
    KdLabel* plain = add(QStringLiteral("x"), 200);
    QVERIFY(bold->sizeHint().width() > plain->sizeHint().width() * 3);
    KdLabel* later = add(QString(), 200);
    later->setText(QStringLiteral("<b>x</b>"));
    QCOMPARE(WidgetLooks::image(*later), WidgetLooks::image(*bold));
}

void tst_KdLabel::lineBreaksDoNotMakeItHigher()
{
    KdLabel* broken = add(QStringLiteral("USB\nMicrophone\nof mine, the long one"), 100);
    KdLabel* flat = add(QStringLiteral("USB Microphone of mine, the long one"), 100);
    QCOMPARE(WidgetLooks::image(*broken), WidgetLooks::image(*flat));
    KdLabel* wide = add(QStringLiteral("USB\nMic"), 300);
    KdLabel* flatWide = add(QStringLiteral("USB Mic"), 300);
    QCOMPARE(wide->sizeHint().height(), flatWide->sizeHint().height());
    QCOMPARE(WidgetLooks::image(*wide), WidgetLooks::image(*flatWide));
}

void tst_KdLabel::layoutMayMakeItNarrow()
{
    KdLabel* label = add(QStringLiteral("A microphone with a long name"), 300);
    QVERIFY(label->minimumSizeHint().width() < 30);
    QVERIFY(label->sizeHint().width() >= label->fontMetrics().horizontalAdvance(
                                             QStringLiteral("A microphone with a long name")));
}

void tst_KdLabel::longTextDoesNotMakeAWindowWide()
{
    KdLabel* label = add(QString(4096, QLatin1Char('W')), 100);
    QVERIFY(label->sizeHint().width() <= 480);
}

void tst_KdLabel::wrappedTextIsNotElided()
{
    KdLabel* label = add(QStringLiteral("Several words in several lines"), 60);
    label->setWordWrap(true);
    QVERIFY(label->overflowText().isEmpty());
    QVERIFY(label->heightForWidth(60) > label->heightForWidth(400));
}

void tst_KdLabel::captionIsQuiet_data()
{
    QTest::addColumn<QString>("skin");

    QTest::newRow("dark") << QStringLiteral("dark");
    QTest::newRow("light") << QStringLiteral("light");
}

void tst_KdLabel::captionIsQuiet()
{
    QFETCH(QString, skin);
    auto* manager = KdSkin::KdSkinManager::instance();
    KdLabel* label = add(QStringLiteral("Audio Device"), 200);
    QVERIFY(manager->setSkin(skin));
    QVERIFY(WidgetLooks::hasColor(WidgetLooks::image(*label), manager->color(KdSkin::Text)));
    label->setCaption(true);
    const QImage quiet = WidgetLooks::image(*label);
    QVERIFY(WidgetLooks::hasColor(quiet, manager->color(KdSkin::TextQuiet)));
    QVERIFY(!WidgetLooks::hasColor(quiet, manager->color(KdSkin::Text)));
    label->setCaption(false);
    QVERIFY(WidgetLooks::hasColor(WidgetLooks::image(*label), manager->color(KdSkin::Text)));
}

void tst_KdLabel::disabledTextIsQuiet()
{
    auto* manager = KdSkin::KdSkinManager::instance();
    for (const bool caption : {false, true}) {
        KdLabel* label = add(QStringLiteral("Audio Device"), caption ? 100 : 200);
        label->setCaption(caption);
        label->setEnabled(false);
        const QImage quiet = WidgetLooks::image(*label);
        QVERIFY(!WidgetLooks::hasColor(quiet, manager->color(KdSkin::Text)));
        // Not fainter: it can be read while what it names cannot be used.
        QVERIFY(WidgetLooks::hasColor(quiet, manager->color(KdSkin::TextQuiet)));
        delete label;
    }
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdLabel>(argc, argv);
}

#include "tst_KdLabel.moc"
