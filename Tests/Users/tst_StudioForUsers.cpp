#include "StudioScenes.h"
#include "UserTest.h"

#include <Studio/StudioLanguages.h>

#include <QScrollArea>
#include <QScrollBar>

class tst_StudioForUsers : public UserTest
{
    Q_OBJECT

protected:
    UserScenes scenes() override { return studioScenes(m_languages) + studioSideScenes(); }

    QStringList foreignTexts() const override
    {
        return {QStringLiteral("(Mic|Cam) [ABC][a-z ,]*"), QStringLiteral("/tmp/[^ ]*"),
                QStringLiteral("\\b(spoken|clip|missing|unreadable|recovered|REC_\\d+_\\d+)"
                               "(\\.\\w+)?\\b"),
                // Reports are shown as the recorder made them, under the names that it gives them.
                QStringLiteral("(?s:\\bfileInfo\n.*)"),
                // A moment, as the system writes it.
                QStringLiteral("\\d+[\\d/.:\\s]+[AP]M"),
                // Usage events, as they stand in the log.
                QStringLiteral("\\brecord_\\w+"), QStringLiteral("^KdRecord Studio$"),
                // A language is named in itself.
                QStringLiteral("^(English|Deutsch|\u7b80\u4f53\u4e2d\u6587)$")};
    }

    void useLanguage(const QString& language) override
    {
        m_languages.use(language);
        QCoreApplication::processEvents();
    }

private Q_SLOTS:
    /** On a screen of 1280 x 720: see the scales at which this runs. */
    void sideWindowsShowAllWithoutScrolling()
    {
        const UserScenes windows = studioSideScenes();
        for (const UserScene& scene : windows) {
            scene.show([&scene](const QWidget& window) {
                const auto* const area = window.findChild<QScrollArea*>();
                QVERIFY2(area->verticalScrollBar()->maximum() == 0, scene.name.constData());
            });
        }
    }

private:
    StudioLanguages m_languages;
};

int main(int argc, char** argv)
{
    return KdTest::run<tst_StudioForUsers>(argc, argv);
}

#include "tst_StudioForUsers.moc"
