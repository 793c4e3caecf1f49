#include "StudioScenes.h"

#include <KdRecord/KdRecordTranslation.h>

#include <Support/ClippedTexts.h>
#include <Support/KdTestCase.h>
#include <Support/ShownTexts.h>

#include <QAbstractButton>
#include <QScreen>
#include <QScrollArea>

/** Studio's dialogs where the screen is lower than they want to be: 1280 x 720 pixels at 200 %. */
class tst_StudioOnASmallScreen : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        // Else nothing here shows anything.
        QVERIFY(QGuiApplication::primaryScreen()->size().height() <= 360);
    }

    void cleanup()
    {
        KdRecordTranslation::remove();
        KdTestCase::cleanup();
    }

    void theyStayOnTheScreenAndSqueezeNothing_data() { addScenes(); }
    void theyStayOnTheScreenAndSqueezeNothing()
    {
        show([](QWidget& dialog) {
            QVERIFY(dialog.screen()->availableGeometry().contains(dialog.geometry()));
            const auto* const area = dialog.findChild<QScrollArea*>();
            QTRY_VERIFY(area->widget()->height() >= area->sizeHint().height());
            QVERIFY(area->viewport()->height() < area->widget()->height());
            QCOMPARE(KdTest::clippedTexts(dialog), QStringList());
            QCOMPARE(KdTest::cutControls(dialog), QStringList());
        });
    }

    void everyControlComesIntoViewWithTheKeyboard_data() { addScenes(); }
    void everyControlComesIntoViewWithTheKeyboard()
    {
        show([](QWidget& dialog) {
            QVector<QWidget*> reached;
            while (true) {
                QTest::keyClick(&dialog, Qt::Key_Tab);
                QWidget* const control = QApplication::focusWidget();
                QVERIFY(control);
                if (reached.contains(control)) {
                    break;
                }
                reached.append(control);
                QVERIFY2(control->visibleRegion().boundingRect() == control->rect(),
                         qPrintable(KdTest::nameOf(*control)));
            }
            const QList<QAbstractButton*> buttons = dialog.findChildren<QAbstractButton*>();
            for (QAbstractButton* button : buttons) {
                QVERIFY(reached.contains(button) || !button->isVisible());
            }
        });
    }

private:
    static void addScenes()
    {
        QTest::addColumn<int>("scene");
        QTest::addColumn<QString>("language");
        const QStringList languages =
            QStringList{QStringLiteral("en")} + KdRecordTranslation::languages();
        const UserScenes all = studioSideScenes();
        for (int i = 0; i < all.size(); ++i) {
            for (const QString& language : languages) {
                QTest::addRow("%s, %s", all.at(i).name.constData(), qPrintable(language))
                    << i << language;
            }
        }
    }

    static void show(const UserScene::Look& look)
    {
        QFETCH(int, scene);
        QFETCH(QString, language);
        KdRecordTranslation::install(QLocale(language));
        studioSideScenes().at(scene).show(look);
    }
};

int main(int argc, char** argv)
{
    return KdTest::run<tst_StudioOnASmallScreen>(argc, argv);
}

#include "tst_StudioOnASmallScreen.moc"
