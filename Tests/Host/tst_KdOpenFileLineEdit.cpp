#include <KdWidgets/KdOpenFileLineEdit.h>
#include <KdWidgets/KdSkinManager.h>
#include <KdWidgets/KdToolButton.h>
#include <Support/DialogDriver.h>
#include <Support/KdTestCase.h>
#include <Support/WidgetLooks.h>

#include <QDir>
#include <QLineEdit>
#include <QSignalSpy>

#include <memory>

class tst_KdOpenFileLineEdit : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void browsingTakesTheChosenFolder();
    void browsingStartsAtTheCurrentFolder();
    void noChoiceChangesNothing();
    void everyChangeIsReported();
    void browsingMayOutliveTheEdit();
    void chooserMayReplaceItself();
    void browseButtonCanBeHidden();
    void textDoesNotRunUnderTheButton();
    void focusGoesToTheText();
    void buttonIsReachedByKeyboard();
    void strangePathsAreTakenAsTheyAre_data();
    void strangePathsAreTakenAsTheyAre();
    void disabledBrowsesNot();
    void buttonSpeaksTheLanguage();

private:
    std::unique_ptr<QWidget> m_window;
    KdOpenFileLineEdit* m_edit = nullptr;
};

void tst_KdOpenFileLineEdit::init()
{
    KdTestCase::init();
    m_window = std::make_unique<QWidget>();
    m_window->setGeometry(400, 300, 300, 200);
    m_edit = new KdOpenFileLineEdit(m_window.get());
    m_edit->setGeometry(20, 20, 204, 24);
    m_edit->setText(QStringLiteral("/takes"));
    m_window->show();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
}

void tst_KdOpenFileLineEdit::cleanup()
{
    m_window.reset();
    KdTestCase::cleanup();
}

void tst_KdOpenFileLineEdit::browsingTakesTheChosenFolder()
{
    m_edit->setFolderChooser(
        [](QWidget*, const QString&) { return QStringLiteral("/other/folder"); });
    DialogDriver::click(*m_window, QStringLiteral("KdOpenFileLineEdit_Browse"));
    QCOMPARE(m_edit->text(), QDir::toNativeSeparators(QStringLiteral("/other/folder")));
}

void tst_KdOpenFileLineEdit::browsingStartsAtTheCurrentFolder()
{
    QString asked;
    QWidget* parent = nullptr;
    m_edit->setFolderChooser([&](QWidget* window, const QString& current) {
        asked = current;
        parent = window;
        return QString();
    });
    DialogDriver::click(*m_edit->browseButton());
    QCOMPARE(asked, QStringLiteral("/takes"));
    QCOMPARE(parent, m_edit);
}

void tst_KdOpenFileLineEdit::noChoiceChangesNothing()
{
    QSignalSpy changed(m_edit, &KdOpenFileLineEdit::textChanged);
    m_edit->setFolderChooser([](QWidget*, const QString&) { return QString(); });
    DialogDriver::click(*m_edit->browseButton());
    QCOMPARE(m_edit->text(), QStringLiteral("/takes"));
    QVERIFY(changed.isEmpty());
}

void tst_KdOpenFileLineEdit::everyChangeIsReported()
{
    QSignalSpy changed(m_edit, &KdOpenFileLineEdit::textChanged);
    m_edit->lineEdit()->setFocus();
    m_edit->lineEdit()->end(false);
    QTest::keyClicks(m_edit->lineEdit(), QStringLiteral("/a"));
    QCOMPARE(changed.count(), 2);
    QCOMPARE(changed.last().first().toString(), QStringLiteral("/takes/a"));
    m_edit->setText(QStringLiteral("/b"));
    QCOMPARE(changed.count(), 3);
    m_edit->setText(QStringLiteral("/b"));
    QCOMPARE(changed.count(), 3);
}

void tst_KdOpenFileLineEdit::browsingMayOutliveTheEdit()
{
    m_edit->setFolderChooser([this](QWidget*, const QString&) {
        delete m_edit;
        return QStringLiteral("/other");
    });
    QTest::mouseClick(m_edit->browseButton(), Qt::LeftButton);
    QVERIFY(!m_window->findChild<KdOpenFileLineEdit*>());
}

void tst_KdOpenFileLineEdit::chooserMayReplaceItself()
{
    m_edit->setFolderChooser([this](QWidget*, const QString&) {
        QString first = QStringLiteral("/first");
        m_edit->setFolderChooser(
            [](QWidget*, const QString&) { return QStringLiteral("/second"); });
        return first;
    });
    DialogDriver::click(*m_edit->browseButton());
    QCOMPARE(m_edit->text(), QDir::toNativeSeparators(QStringLiteral("/first")));
    DialogDriver::click(*m_edit->browseButton());
    QCOMPARE(m_edit->text(), QDir::toNativeSeparators(QStringLiteral("/second")));
}

void tst_KdOpenFileLineEdit::browseButtonCanBeHidden()
{
    QVERIFY(m_edit->browseButton()->isVisible());
    m_edit->setBrowseButtonVisible(false);
    QVERIFY(!m_edit->browseButton()->isVisible());
    m_edit->setBrowseButtonVisible(true);
    QVERIFY(m_edit->browseButton()->isVisible());
}

void tst_KdOpenFileLineEdit::textDoesNotRunUnderTheButton()
{
    m_edit->setText(QString(200, QLatin1Char('W')));
    const QImage filled = WidgetLooks::image(*m_edit->browseButton());
    m_edit->setText(QString());
    QCOMPARE(WidgetLooks::image(*m_edit->browseButton()), filled);
    QVERIFY(m_edit->rect().contains(
        QRect(m_edit->browseButton()->mapTo(m_edit, QPoint()), m_edit->browseButton()->size())));
}

void tst_KdOpenFileLineEdit::focusGoesToTheText()
{
    m_edit->setFocus();
    QVERIFY(m_edit->lineEdit()->hasFocus());
    const QColor accent = KdSkin::KdSkinManager::instance()->color(KdSkin::Accent);
    QCOMPARE(WidgetLooks::colorAt(*m_edit, {100, 0}), accent);
}

void tst_KdOpenFileLineEdit::buttonIsReachedByKeyboard()
{
    int asked = 0;
    m_edit->setFolderChooser([&asked](QWidget*, const QString&) {
        ++asked;
        return QString();
    });
    m_edit->setFocus();
    QTest::keyClick(m_edit->lineEdit(), Qt::Key_Tab);
    QVERIFY(m_edit->browseButton()->hasFocus());
    QTest::keyClick(m_edit->browseButton(), Qt::Key_Return);
    QCOMPARE(asked, 1);
}

void tst_KdOpenFileLineEdit::strangePathsAreTakenAsTheyAre_data()
{
    QTest::addColumn<QString>("path");

    QTest::newRow("spaces") << QStringLiteral("/my takes/of today");
    QTest::newRow("place marker") << QStringLiteral("/takes %1/%n");
    QTest::newRow("markup") << QStringLiteral("/<b>takes</b>");
    QTest::newRow("not Latin") << QStringLiteral("/\u5f55\u97f3/\u05d0\u05d1");
    QTest::newRow("long name") << QLatin1Char('/') + QString(255, QLatin1Char('x'));
}

void tst_KdOpenFileLineEdit::strangePathsAreTakenAsTheyAre()
{
    QFETCH(QString, path);
    m_edit->setFolderChooser([path](QWidget*, const QString&) { return path; });
    DialogDriver::click(*m_edit->browseButton());
    QCOMPARE(m_edit->text(), QDir::toNativeSeparators(path));
}

void tst_KdOpenFileLineEdit::disabledBrowsesNot()
{
    bool asked = false;
    m_edit->setFolderChooser([&asked](QWidget*, const QString&) {
        asked = true;
        return QString();
    });
    m_edit->setEnabled(false);
    QTest::mouseClick(m_edit->browseButton(), Qt::LeftButton);
    QVERIFY(!asked);
}

void tst_KdOpenFileLineEdit::buttonSpeaksTheLanguage()
{
    QCOMPARE(m_edit->browseButton()->toolTip(), QStringLiteral("Choose a folder"));
    QCOMPARE(m_edit->browseButton()->accessibleName(), QStringLiteral("Choose a folder"));
    const WidgetLooks::Brackets language;
    QTRY_COMPARE(m_edit->browseButton()->toolTip(), QStringLiteral("[Choose a folder]"));
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdOpenFileLineEdit>(argc, argv);
}

#include "tst_KdOpenFileLineEdit.moc"
