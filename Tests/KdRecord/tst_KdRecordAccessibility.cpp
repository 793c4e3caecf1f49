#include <KdRecord/KQuestionLabel.h>
#include <KdRecord/KdAnnouncer.h>
#include <KdRecord/KdCountCtrlVideo.h>
#include <KdRecord/KdWebCamDisplayLabel.h>

#include <Support/KdTestCase.h>

#include <QAccessible>

class tst_KdRecordAccessibility : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void ownControlsSayWhatTheyAre();
};

void tst_KdRecordAccessibility::ownControlsSayWhatTheyAre()
{
    QWidget window;
    const auto role = [](QObject* object) {
        return QAccessible::queryAccessibleInterface(object)->role();
    };
    QCOMPARE(role(new KdAnnouncer(&window)), QAccessible::AlertMessage);
    QCOMPARE(role(new KdCountCtrl(&window)), QAccessible::AlertMessage);
    QCOMPARE(role(new KdCountCtrlVideo(&window)), QAccessible::AlertMessage);
    QCOMPARE(role(new KdWebCamDisplayLabel(&window)), QAccessible::Graphic);
    QCOMPARE(role(new KQuestionLabel(&window)), QAccessible::HelpBalloon);
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdRecordAccessibility>(argc, argv);
}

#include "tst_KdRecordAccessibility.moc"
