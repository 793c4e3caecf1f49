#include "RecorderScenes.h"
#include "UserTest.h"

class tst_RecordersForUsers : public UserTest
{
    Q_OBJECT

protected:
    UserScenes scenes() override
    {
        return voiceOverScenes() + webcamScenes() + messageScenes(answers);
    }

    QStringList foreignTexts() const override
    {
        return {QStringLiteral("(Mic|Cam) [AB]"), QStringLiteral("/tmp/[^ ]*"),
                // The tray's tip is the same wherever a host ships it.
                QStringLiteral("Piprop Download and Installation")};
    }
};

int main(int argc, char** argv)
{
    return KdTest::run<tst_RecordersForUsers>(argc, argv);
}

#include "tst_RecordersForUsers.moc"
