#include <KdWidgets/KdSkinManager.h>
#include <KdWidgets/KdToolButton.h>
#include <Support/KdTestCase.h>
#include <Support/WidgetLooks.h>

#include <QAccessible>
#include <QSignalSpy>

#include <memory>

class tst_KdToolButton : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void eachStateShowsItsImage_data();
    void eachStateShowsItsImage();
    void missingStatesAreMadeFromTheNormalImage();
    void checkedWithoutImagesOfItsOwnKeepsThem();
    void iconSizeBecomesThatOfTheImage();
    void sheetGivesEachStateItsImageAboveItsGround();
    void sheetMayLeaveImagesOut();
    void imageFollowsThePropertyThatTheSheetAsksFor();
    void namesTheFilesOfASet();
    void textStandsBesideTheIcon_data();
    void textStandsBesideTheIcon();
    void keysPressIt_data();
    void keysPressIt();
    void heldReturnPressesOnce();
    void mayBeDestroyedByItsOwnPress();
    void keyboardFocusIsVisible();
    void toolTipIsPlainText();
    void toolTipShowsTheShortcutQuietly();
    void toolTipIsTheAccessibleName();
    void ownNameOrTextGoesBeforeTheToolTip();
    void isMadeWithNameAndSheet();
    void recordButtonReadsAsRecordAndStop_data();
    void recordButtonReadsAsRecordAndStop();

private:
    QString image(const QColor& color);
    QColor middle() { return WidgetLooks::colorAt(*m_button, m_button->rect().center()); }

    std::unique_ptr<QWidget> m_window;
    KdToolButton* m_button = nullptr;
};

void tst_KdToolButton::init()
{
    KdTestCase::init();
    KdSkin::KdSkinManager::instance()->setSkin(QStringLiteral("dark"));
    m_window = std::make_unique<QWidget>();
    m_window->setGeometry(400, 300, 300, 200);
    m_window->setFocusPolicy(Qt::StrongFocus);
    m_button = new KdToolButton(m_window.get());
    m_button->setGeometry(50, 50, 40, 40);
    m_window->show();
    m_window->setFocus();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
}

void tst_KdToolButton::cleanup()
{
    m_window.reset();
    KdTestCase::cleanup();
}

QString tst_KdToolButton::image(const QColor& color)
{
    QImage square(24, 24, QImage::Format_ARGB32);
    square.fill(color);
    const QString path = temporaryPath(color.name().mid(1) + QStringLiteral(".png"));
    return square.save(path) ? path : QString();
}

void tst_KdToolButton::eachStateShowsItsImage_data()
{
    QTest::addColumn<QString>("state");
    QTest::addColumn<QColor>("unchecked");
    QTest::addColumn<QColor>("checked");

    const auto row = [](const char* state, const char* unchecked, const char* checked) {
        QTest::newRow(state) << QString::fromLatin1(state) << QColor(QLatin1String(unchecked))
                             << QColor(QLatin1String(checked));
    };
    row("normal", "#ff0000", "#880000");
    row("hover", "#00ff00", "#008800");
    row("pressed", "#0000ff", "#000088");
    row("disabled", "#ffff00", "#888800");
}

void tst_KdToolButton::eachStateShowsItsImage()
{
    QFETCH(QString, state);
    QFETCH(QColor, unchecked);
    QFETCH(QColor, checked);
    m_button->setCheckable(true);
    const auto files = [this](const char* normal, const char* hover, const char* pressed,
                              const char* disabled) {
        return KdToolButton::IconFiles{
            image(QColor(QLatin1String(normal))), image(QColor(QLatin1String(hover))),
            image(QColor(QLatin1String(pressed))), image(QColor(QLatin1String(disabled)))};
    };
    m_button->setIconFiles(files("#ff0000", "#00ff00", "#0000ff", "#ffff00"),
                           files("#880000", "#008800", "#000088", "#888800"));
    m_button->setAttribute(Qt::WA_UnderMouse, state == QLatin1String("hover"));
    m_button->setDown(state == QLatin1String("pressed"));
    m_button->setEnabled(state != QLatin1String("disabled"));
    QCOMPARE(middle(), unchecked);
    m_button->setChecked(true);
    QCOMPARE(middle(), checked);
}

void tst_KdToolButton::missingStatesAreMadeFromTheNormalImage()
{
    const QString missing = temporaryPath(QStringLiteral("missing.png"));
    m_button->setIconFiles({image(Qt::red), QString(), missing, QString()});
    m_button->setDown(true);
    QCOMPARE(middle(), QColor(Qt::red));
    m_button->setDown(false);
    m_button->setAttribute(Qt::WA_UnderMouse);
    QCOMPARE(middle(), QColor(Qt::red));
    m_button->setEnabled(false);
    QVERIFY(middle() != QColor(Qt::red));
    QVERIFY(middle() != KdSkin::KdSkinManager::instance()->color(KdSkin::Window));
}

void tst_KdToolButton::checkedWithoutImagesOfItsOwnKeepsThem()
{
    m_button->setCheckable(true);
    m_button->setIconFiles({image(Qt::red), image(Qt::green), image(Qt::blue), image(Qt::yellow)});
    m_button->setChecked(true);
    QCOMPARE(middle(), QColor(Qt::red));
}

void tst_KdToolButton::iconSizeBecomesThatOfTheImage()
{
    m_button->setIconFiles({image(Qt::red), QString(), QString(), QString()});
    QCOMPARE(m_button->iconSize(), QSize(24, 24));
}

void tst_KdToolButton::sheetGivesEachStateItsImageAboveItsGround()
{
    const QColor ground(18, 52, 86);
    const QString sheet = QStringLiteral("QToolButton { background: #123456; border: none;"
                                         "qproperty-iconSize: 8px 8px;"
                                         "qproperty-images: \"%1 %2 %3 %4\";"
                                         "qproperty-checkedImages: \"%5\"; }");
    m_button->setStyleSheet(sheet.arg(image(Qt::red), image(Qt::green), image(Qt::blue),
                                      image(Qt::yellow), image(Qt::magenta)));
    m_button->setCheckable(true);
    QCOMPARE(middle(), QColor(Qt::red));
    QCOMPARE(WidgetLooks::colorAt(*m_button, {15, 15}), ground);
    QCOMPARE(WidgetLooks::colorAt(*m_button, {17, 17}), QColor(Qt::red));
    m_button->setAttribute(Qt::WA_UnderMouse);
    QCOMPARE(middle(), QColor(Qt::green));
    m_button->setDown(true);
    QCOMPARE(middle(), QColor(Qt::blue));
    m_button->setEnabled(false);
    QCOMPARE(middle(), QColor(Qt::yellow));
    m_button->setEnabled(true);
    m_button->setDown(false);
    m_button->setChecked(true);
    QCOMPARE(middle(), QColor(Qt::magenta));
}

void tst_KdToolButton::sheetMayLeaveImagesOut()
{
    m_button->setImages(image(Qt::red) + QStringLiteral("  - - ") + image(Qt::blue));
    m_button->setAttribute(Qt::WA_UnderMouse);
    QCOMPARE(middle(), QColor(Qt::red));
    m_button->setEnabled(false);
    QCOMPARE(middle(), QColor(Qt::blue));
    m_button->setEnabled(true);
    m_button->setImages(image(Qt::red) + QLatin1Char(' ') + image(Qt::green));
    m_button->setDown(true);
    QCOMPARE(middle(), QColor(Qt::green));
    m_button->setImages(QString());
    QVERIFY(middle() != QColor(Qt::green));
}

void tst_KdToolButton::imageFollowsThePropertyThatTheSheetAsksFor()
{
    const QString sheet =
        QStringLiteral("QToolButton { qproperty-images: \"%1\"; }"
                       "QToolButton[chosen=\"true\"] { qproperty-images: \"%2\"; }");
    m_button->setStyleSheet(sheet.arg(image(Qt::red), image(Qt::green)));
    QCOMPARE(middle(), QColor(Qt::red));
    m_button->setProperty("chosen", true);
    KdSkin::KdSkinManager::repolish(m_button);
    QCOMPARE(middle(), QColor(Qt::green));
    m_button->setProperty("chosen", false);
    KdSkin::KdSkinManager::repolish(m_button);
    QCOMPARE(middle(), QColor(Qt::red));
}

void tst_KdToolButton::namesTheFilesOfASet()
{
    const auto files = KdToolButton::svgIconSet(QStringLiteral("icon36_reset"));
    QCOMPARE(files.normal, QStringLiteral(":/SVGResourceFile/icon36_reset_normal.svg"));
    QCOMPARE(files.hover, QStringLiteral(":/SVGResourceFile/icon36_reset_hover.svg"));
    QCOMPARE(files.pressed, QStringLiteral(":/SVGResourceFile/icon36_reset_pressed.svg"));
    QCOMPARE(files.disabled, QStringLiteral(":/SVGResourceFile/icon36_reset_disabled.svg"));
}

void tst_KdToolButton::textStandsBesideTheIcon_data()
{
    QTest::addColumn<Qt::LayoutDirection>("direction");

    QTest::newRow("icon ahead") << Qt::LeftToRight;
    QTest::newRow("icon behind") << Qt::RightToLeft;
}

void tst_KdToolButton::textStandsBesideTheIcon()
{
    QFETCH(Qt::LayoutDirection, direction);
    m_button->setIconFiles({image(Qt::red), QString(), QString(), QString()});
    m_button->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    m_button->setText(QStringLiteral("Advanced"));
    m_button->setLayoutDirection(direction);
    m_button->resize(m_button->sizeHint());
    const QImage shown = WidgetLooks::image(*m_button);
    const int width = shown.width();
    const QImage left = shown.copy(0, 0, width / 2, shown.height());
    const QImage right = shown.copy(width - width / 2, 0, width / 2, shown.height());
    const bool iconLeft = direction == Qt::LeftToRight;
    const QColor text = KdSkin::KdSkinManager::instance()->color(KdSkin::Text);
    QVERIFY(WidgetLooks::hasColor(iconLeft ? left : right, Qt::red));
    QVERIFY(!WidgetLooks::hasColor(iconLeft ? right : left, Qt::red));
    QVERIFY(WidgetLooks::hasColor(iconLeft ? right : left, text));
}

void tst_KdToolButton::keysPressIt_data()
{
    QTest::addColumn<Qt::Key>("key");

    QTest::newRow("Space") << Qt::Key_Space;
    QTest::newRow("Return") << Qt::Key_Return;
    QTest::newRow("Enter") << Qt::Key_Enter;
}

void tst_KdToolButton::keysPressIt()
{
    QFETCH(Qt::Key, key);
    m_button->setCheckable(true);
    QSignalSpy clicked(m_button, &QToolButton::clicked);
    QTest::keyClick(m_window.get(), Qt::Key_Tab);
    QVERIFY(m_button->hasFocus());
    QTest::keyClick(m_button, key);
    QCOMPARE(clicked.count(), 1);
    QVERIFY(m_button->isChecked());
    m_button->setEnabled(false);
    QTest::keyClick(m_button, key);
    QCOMPARE(clicked.count(), 1);
}

void tst_KdToolButton::heldReturnPressesOnce()
{
    QSignalSpy clicked(m_button, &QToolButton::clicked);
    for (const bool repeated : {false, true, true}) {
        QKeyEvent press(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, QString(), repeated);
        QApplication::sendEvent(m_button, &press);
    }
    QCOMPARE(clicked.count(), 1);
}

void tst_KdToolButton::mayBeDestroyedByItsOwnPress()
{
    const QPointer<KdToolButton> alive(m_button);
    connect(m_button, &QToolButton::clicked, this, [this] { delete m_button; });
    m_button->setFocus();
    QTest::keyClick(m_button, Qt::Key_Return);
    QVERIFY(!alive);
}

void tst_KdToolButton::keyboardFocusIsVisible()
{
    m_button->setIconFiles({image(Qt::red), QString(), QString(), QString()});
    const QColor accent = KdSkin::KdSkinManager::instance()->color(KdSkin::Accent);
    QVERIFY(!WidgetLooks::hasColor(WidgetLooks::image(*m_button), accent));
    QTest::keyClick(m_window.get(), Qt::Key_Tab);
    QVERIFY(m_button->hasFocus());
    QCOMPARE(WidgetLooks::colorAt(*m_button, {20, 0}), accent);
    QCOMPARE(WidgetLooks::colorAt(*m_button, {20, 1}), accent);
}

void tst_KdToolButton::toolTipIsPlainText()
{
    QVERIFY(WidgetLooks::toolTip(*m_button).isEmpty());
    m_button->setToolTip(QStringLiteral("<b>USB</b> & more"));
    QCOMPARE(WidgetLooks::toolTip(*m_button),
             QStringLiteral("<qt>&lt;b&gt;USB&lt;/b&gt; &amp; more</qt>"));
}

void tst_KdToolButton::toolTipShowsTheShortcutQuietly()
{
    const QString quiet = KdSkin::KdSkinManager::instance()->color(KdSkin::TextQuiet).name();
    m_button->setToolTip(QStringLiteral("Start (R)"));
    QVERIFY(!WidgetLooks::toolTip(*m_button).contains(quiet));
    m_button->setProperty("WITH_SHORTCUT", true);
    QVERIFY(WidgetLooks::toolTip(*m_button).contains(quiet));
    QCOMPARE(m_button->toolTip(), QStringLiteral("Start (R)"));
}

void tst_KdToolButton::toolTipIsTheAccessibleName()
{
    m_button->setToolTip(QStringLiteral("Start (R)"));
    const QAccessibleInterface* button = QAccessible::queryAccessibleInterface(m_button);
    QCOMPARE(button->text(QAccessible::Name), QStringLiteral("Start (R)"));
    m_button->setToolTip(QStringLiteral("Stop (R)"));
    QCOMPARE(button->text(QAccessible::Name), QStringLiteral("Stop (R)"));
}

void tst_KdToolButton::ownNameOrTextGoesBeforeTheToolTip()
{
    const QAccessibleInterface* button = QAccessible::queryAccessibleInterface(m_button);
    m_button->setAccessibleName(QStringLiteral("Record"));
    m_button->setToolTip(QStringLiteral("Start (R)"));
    QCOMPARE(button->text(QAccessible::Name), QStringLiteral("Record"));
    auto* named = new KdToolButton(m_window.get());
    named->setText(QStringLiteral("Advanced"));
    named->setToolTip(QStringLiteral("More choices"));
    QCOMPARE(QAccessible::queryAccessibleInterface(named)->text(QAccessible::Name),
             QStringLiteral("Advanced"));
}

void tst_KdToolButton::isMadeWithNameAndSheet()
{
    const QString key = QStringLiteral("BasicWidget/KAudioCapture_ButtonRefresh");
    auto* made = KdToolButton::CreateToolButton(m_window.get(), QStringLiteral("aName"), key);
    QCOMPARE(made->objectName(), QStringLiteral("aName"));
    QCOMPARE(made->parentWidget(), m_window.get());
    QCOMPARE(made->styleSheet(), KdSkin::KdSkinManager::instance()->styleSheet(key));
    auto* plain = KdToolButton::CreateToolButton(m_window.get(), QStringLiteral("other"));
    QVERIFY(plain->styleSheet().isEmpty());
}

void tst_KdToolButton::recordButtonReadsAsRecordAndStop_data()
{
    QTest::addColumn<QString>("skin");
    QTest::addColumn<int>("side");

    for (const QString& skin : KdSkin::KdSkinManager::instance()->skins()) {
        for (const int side : {66, 72}) {
            QTest::addRow("%s, %d", qPrintable(skin), side) << skin << side;
        }
    }
}

void tst_KdToolButton::recordButtonReadsAsRecordAndStop()
{
    QFETCH(QString, skin);
    QFETCH(int, side);
    auto* manager = KdSkin::KdSkinManager::instance();
    QVERIFY(manager->setSkin(skin));
    auto* button = KdToolButton::CreateToolButton(
        m_window.get(), QStringLiteral("KAudioCapture_RecorderButton"),
        QStringLiteral("BasicWidget/KAudioCapture_RecorderButton"));
    button->setCheckable(true);
    button->setGeometry(100, 50, side, side);
    button->show();
    const QColor record = manager->color(KdSkin::Record);
    const QPoint middle(side / 2, side / 2);
    // A place that belongs to the disc, but not to the smaller square.
    const QPoint inDisc(side / 2, side / 5);
    QCOMPARE(WidgetLooks::colorAt(*button, middle), record);
    QCOMPARE(WidgetLooks::colorAt(*button, inDisc), record);
    QVERIFY(WidgetLooks::hasColor(WidgetLooks::image(*button), manager->color(KdSkin::Text)));
    button->setChecked(true);
    QCOMPARE(WidgetLooks::colorAt(*button, middle), record);
    QCOMPARE(WidgetLooks::colorAt(*button, inDisc), manager->color(KdSkin::Window));
    button->setEnabled(false);
    QVERIFY(WidgetLooks::colorAt(*button, middle) != record);
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdToolButton>(argc, argv);
}

#include "tst_KdToolButton.moc"
