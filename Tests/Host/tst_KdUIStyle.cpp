#include "Support/KdTestCase.h"

#include <KdWidgets/KdSkinManager.h>
#include <KdWidgets/KdUIStyle.h>

#include <QWidget>

using KdSkin::KdSkinManager;

class tst_KdUIStyle : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void groundFollowsTheNumberAndTheSkin();
};

void tst_KdUIStyle::groundFollowsTheNumberAndTheSkin()
{
    QWidget widget;
    const auto ground = [&widget] { return widget.grab().toImage().pixelColor(5, 5); };
    KdUIStyle::SetBGColorType(&widget, 18);
    for (const char* skin : {"dark", "light"}) {
        KdSkinManager::instance()->setSkin(QString::fromLatin1(skin));
        QCOMPARE(ground(), KdSkinManager::instance()->color(KdSkin::Window));
    }
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdUIStyle>(argc, argv);
}

#include "tst_KdUIStyle.moc"
