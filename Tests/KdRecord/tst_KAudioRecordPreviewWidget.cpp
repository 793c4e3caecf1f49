#include <KdAppSettings/KdAppSettings.h>
#include <KdRecord/KAudioRecordPreviewWidget.h>
#include <KdWidgets/KdCheckBox.h>
#include <KdWidgets/KdLabel.h>

#include <Support/KdTestCase.h>

#include <QDialog>
#include <QTranslator>
#include <QVBoxLayout>

namespace {

const auto Opened = QStringLiteral("Open the Recording Preview Window");
const auto Closed = QStringLiteral("Close the Recording Preview Window");

KAudioAdvanceSettings& settings()
{
    return *KdAppSettings::GetInstance()->GetSettings()->GetAudioAdvanceSettings();
}

KdCheckBox* switchOf(QWidget& widget)
{
    return widget.findChild<KdCheckBox*>();
}

/** Puts every text of the row in brackets. */
class Brackets : public QTranslator
{
public:
    bool isEmpty() const override { return false; }
    QString translate(const char* context, const char* source, const char* /*disambiguation*/,
                      int /*n*/) const override
    {
        return qstrcmp(context, "KAudioRecordPreviewWidget") == 0
                   ? QLatin1Char('[') + QString::fromUtf8(source) + QLatin1Char(']')
                   : QString();
    }
};

} // namespace

class tst_KAudioRecordPreviewWidget : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void labelHasANoBreakSpace();
    void standsLabelAndSwitchInOneLine();
    void textFollowsTheState();
    void settingTheStateWritesNothing();
    void clickingWritesAtOnce();
    void spaceWritesAtOnce();
    void cancelledDialogKeepsWhatWasWritten();
    void retranslatesBothTexts();
    void switchHasAnAccessibleName();
};

void tst_KAudioRecordPreviewWidget::init()
{
    KdTestCase::init();
    settings().SetRecordPreview(false);
}

void tst_KAudioRecordPreviewWidget::labelHasANoBreakSpace()
{
    KAudioRecordPreviewWidget row;
    QCOMPARE(row.findChild<KdLabel*>()->text(),
             QStringLiteral("Recording") + QChar(0x00a0) + QStringLiteral("preview"));
}

void tst_KAudioRecordPreviewWidget::standsLabelAndSwitchInOneLine()
{
    KAudioRecordPreviewWidget row;
    row.resize(416, 26);
    row.show();
    const QRect label = row.findChild<KdLabel*>()->geometry();
    const QRect box = switchOf(row)->geometry();

    QCOMPARE(label.left(), 0);
    QCOMPARE(label.height(), 24);
    QCOMPARE(box.height(), 24);
    QCOMPARE(box.left(), label.right() + 1 + 16);
    QVERIFY(box.right() < row.width());
}

void tst_KAudioRecordPreviewWidget::textFollowsTheState()
{
    KAudioRecordPreviewWidget row;
    QVERIFY(!row.getRecordPreviewCheck());
    QCOMPARE(switchOf(row)->text(), Closed);
    row.setRecordPreviewCheck(true);
    QVERIFY(row.getRecordPreviewCheck());
    QCOMPARE(switchOf(row)->text(), Opened);
    row.setRecordPreviewCheck(false);
    QVERIFY(!row.getRecordPreviewCheck());
    QCOMPARE(switchOf(row)->text(), Closed);
}

void tst_KAudioRecordPreviewWidget::settingTheStateWritesNothing()
{
    KAudioRecordPreviewWidget row;
    row.setRecordPreviewCheck(true);
    QVERIFY(!settings().GetRecordPreview());
}

void tst_KAudioRecordPreviewWidget::clickingWritesAtOnce()
{
    KAudioRecordPreviewWidget row;
    switchOf(row)->click();
    QVERIFY(settings().GetRecordPreview());
    QCOMPARE(switchOf(row)->text(), Opened);
    switchOf(row)->click();
    QVERIFY(!settings().GetRecordPreview());
    QCOMPARE(switchOf(row)->text(), Closed);
}

void tst_KAudioRecordPreviewWidget::spaceWritesAtOnce()
{
    KAudioRecordPreviewWidget row;
    QTest::keyClick(switchOf(row), Qt::Key_Space);
    QVERIFY(settings().GetRecordPreview());
}

void tst_KAudioRecordPreviewWidget::cancelledDialogKeepsWhatWasWritten()
{
    QDialog dialog;
    auto* const layout = new QVBoxLayout(&dialog);
    auto* const row = new KAudioRecordPreviewWidget(&dialog);
    layout->addWidget(row);
    dialog.open();
    switchOf(*row)->click();
    dialog.reject();

    QCOMPARE(dialog.result(), int(QDialog::Rejected));
    QVERIFY(settings().GetRecordPreview());
}

void tst_KAudioRecordPreviewWidget::retranslatesBothTexts()
{
    KAudioRecordPreviewWidget row;
    row.setRecordPreviewCheck(true);
    Brackets brackets;
    QCoreApplication::installTranslator(&brackets);
    row.RetranslateUi();
    const QString label = row.findChild<KdLabel*>()->text();
    const QString text = switchOf(row)->text();
    QCoreApplication::removeTranslator(&brackets);

    QCOMPARE(label, QStringLiteral("[Recording\u00a0preview]"));
    QCOMPARE(text, QStringLiteral("[Open the Recording Preview Window]"));
    QVERIFY(row.getRecordPreviewCheck());
}

void tst_KAudioRecordPreviewWidget::switchHasAnAccessibleName()
{
    KAudioRecordPreviewWidget row;
    QCOMPARE(switchOf(row)->accessibleName(), row.findChild<KdLabel*>()->text());
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KAudioRecordPreviewWidget>(argc, argv);
}

#include "tst_KAudioRecordPreviewWidget.moc"
