#include <KdAppSettings/KdAppSettings.h>
#include <KdRecord/KAdvanceSettings.h>
#include <KdRecord/KAudioSettings.h>
#include <KdRecord/KComboboxExt.h>
#include <KdRecord/KQuestionLabel.h>
#include <KdRecord/KdRecordTranslation.h>
#include <KdVBLModel/KdTrackEventLog.h>
#include <KdWidgets/KdCheckBox.h>
#include <KdWidgets/KdComboBox.h>
#include <KdWidgets/KdLineWidget.h>
#include <KdWidgets/KdPushButton.h>
#include <KdWidgets/KdSkinManager.h>
#include <KdWidgets/KdTitleBar.h>
#include <KdWidgets/KdToast.h>

#include <Support/ClippedTexts.h>
#include <Support/KdTestCase.h>

#include <QSignalSpy>
#include <QTimer>
#include <QToolButton>

#include <functional>
#include <memory>

namespace {

const _AudioAdvanceData Stored{0x20434141, 2, 48000, 320, 2, true};

QString textOf(const KdTrackEventRecord& record)
{
    QStringList parts{record.name};
    for (const auto& property : record.properties) {
        parts.append(property.first + QLatin1Char('=') + property.second.toString());
    }
    return parts.join(QLatin1Char(' '));
}

QStringList sentEvents()
{
    QStringList texts;
    const QVector<KdTrackEventRecord> records = KdTrackEventLog::records();
    for (const KdTrackEventRecord& record : records) {
        texts.append(textOf(record));
    }
    return texts;
}

QString click(const char* button)
{
    return QStringLiteral("record_video_advanced_setting_click record_type=record_audio "
                          "button_name=") +
           QLatin1String(button);
}

} // namespace

class tst_KAdvanceSettings : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void isAModalDialogNamedAdvanced();
    void everythingFitsItsSize();
    void noTextIsClippedInAnyLanguage_data();
    void noTextIsClippedInAnyLanguage();
    void cancelStandsLeftOfApplyAndIsPrimary();
    void focusGoesFromTopToBottom();
    void carriesDataInAndOut();

    void applyReportsAndAccepts();
    void cancelRejectsSilently();
    void otherWaysOutReject_data();
    void otherWaysOutReject();
    void returnPressesTheFocusedButton();
    void returnElsewhereCancels();
    void openedListsAreReported_data();
    void openedListsAreReported();

    void changeIsNotedUntilReset();
    void loadingIsNoChange();
    void neverEmitsItsOwnChangeSignal();
    void previewSwitchIsWrittenThoughCancelled();
    void writingIsLeftToTheOwner();
    void isReusedForTheNextShowing();

private:
    template <typename Widget>
    Widget* child(const char* name) const
    {
        return m_dialog->findChild<Widget*>(QString::fromLatin1(name));
    }
    KdPushButton* apply() const { return child<KdPushButton>("KAdvanceSettings_Apply"); }
    KdPushButton* cancel() const { return child<KdPushButton>("KAdvanceSettings_Cancel"); }
    KdComboBox* combo(const char* row) const { return child<KComboboxExt>(row)->combobox(); }
    /** Runs the dialog modally as its owner does. */
    int execThen(const std::function<void()>& act);

    std::unique_ptr<KAdvanceSettings> m_dialog;
};

void tst_KAdvanceSettings::init()
{
    KdTestCase::init();
    KdTrackEventLog::clear();
    m_dialog = std::make_unique<KAdvanceSettings>();
    m_dialog->setFixedSize(480, 473);
    m_dialog->loadData(Stored);
}

void tst_KAdvanceSettings::cleanup()
{
    m_dialog.reset();
    KdRecordTranslation::remove();
    KdSkin::KdSkinManager::instance()->setSkin(QStringLiteral("dark"));
    KdTestCase::cleanup();
}

int tst_KAdvanceSettings::execThen(const std::function<void()>& act)
{
    QTimer::singleShot(0, m_dialog.get(), act);
    return m_dialog->exec();
}

void tst_KAdvanceSettings::isAModalDialogNamedAdvanced()
{
    bool modal = false;
    execThen([&] {
        modal = m_dialog->isModal();
        m_dialog->slotCancel();
    });
    QVERIFY(modal);
    QCOMPARE(m_dialog->windowTitle(), QStringLiteral("Advanced"));
    QCOMPARE(m_dialog->titleBar()->title(), QStringLiteral("Advanced"));
    QVERIFY(m_dialog->windowFlags() & Qt::FramelessWindowHint);
}

void tst_KAdvanceSettings::everythingFitsItsSize()
{
    m_dialog->show();
    const QWidget* const content = m_dialog->contentWidget();
    const auto* const line = content->findChild<KdLineWidget*>();
    const auto* const page = content->findChild<KAudioSettings*>();

    QCOMPARE(m_dialog->size(), QSize(480, 473));
    QCOMPARE(line->geometry().top(), 12);
    QCOMPARE(line->geometry().left(), 32);
    QCOMPARE(line->width(), content->width() - 64);
    QCOMPARE(page->geometry().top(), line->geometry().bottom() + 1 + 16);
    QCOMPARE(page->height(), 359);
    QCOMPARE(apply()->geometry().top(), page->geometry().bottom() + 1 + 16);
    QVERIFY(content->rect().bottom() - apply()->geometry().bottom() >= 8);
    const QList<QWidget*> rows =
        page->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly);
    for (const QWidget* row : rows) {
        QVERIFY(!row->isVisible() || page->rect().contains(row->geometry()));
    }
}

void tst_KAdvanceSettings::noTextIsClippedInAnyLanguage_data()
{
    QTest::addColumn<QString>("language");
    QTest::addColumn<QString>("skin");

    QStringList languages = KdRecordTranslation::languages();
    languages.append(QStringLiteral("en"));
    const QStringList skins = KdSkin::KdSkinManager::instance()->skins();
    for (const QString& skin : skins) {
        for (const QString& language : qAsConst(languages)) {
            QTest::newRow(qPrintable(language + QLatin1Char(' ') + skin)) << language << skin;
        }
    }
}

void tst_KAdvanceSettings::noTextIsClippedInAnyLanguage()
{
    QFETCH(QString, language);
    QFETCH(QString, skin);
    QVERIFY(KdSkin::KdSkinManager::instance()->setSkin(skin));
    QVERIFY(KdRecordTranslation::install(QLocale(language)));
    m_dialog->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_dialog.get()));
    m_dialog->loadData({0x20434141, 1, 22050, 512, 1, true});
    QTRY_COMPARE(KdTest::clippedTexts(*m_dialog), QStringList());
    QTest::mouseClick(m_dialog->findChild<KdCheckBox*>(), Qt::LeftButton, Qt::NoModifier,
                      QPoint(8, 12));
    combo("KAudioSettings_BitrateMode")->setCurrentIndex(1);
    QVERIFY(m_dialog->findChild<KdToast*>());
    QTRY_COMPARE(KdTest::clippedTexts(*m_dialog), QStringList());
    QVERIFY(m_dialog->findChild<KdToast*>()->width() <= m_dialog->width());
}

void tst_KAdvanceSettings::cancelStandsLeftOfApplyAndIsPrimary()
{
    m_dialog->show();
    QCOMPARE(cancel()->text(), QStringLiteral("Cancel"));
    QCOMPARE(apply()->text(), QStringLiteral("Apply"));
    QCOMPARE(apply()->x(), cancel()->geometry().right() + 1 + 12);
    QCOMPARE(apply()->geometry().right(), m_dialog->contentWidget()->width() - 1 - 32);
    QCOMPARE(cancel()->property("kind").toString(), QStringLiteral("primary"));
    QCOMPARE(apply()->property("kind").toString(), QStringLiteral("secondary"));
    QCOMPARE(cancel()->height(), 24);
    QCOMPARE(apply()->height(), 24);
}

void tst_KAdvanceSettings::focusGoesFromTopToBottom()
{
    m_dialog->show();
    QVERIFY(QTest::qWaitForWindowActive(m_dialog.get()));
    combo("KAudioSettings_Encoder")->setFocus(Qt::TabFocusReason);
    const QVector<QWidget*> order{combo("KAudioSettings_Encoder"),
                                  combo("KAudioSettings_Channel"),
                                  combo("KAudioSettings_SampleRate"),
                                  combo("KAudioSettings_Bitrate"),
                                  m_dialog->findChild<KQuestionLabel*>(),
                                  combo("KAudioSettings_BitrateMode"),
                                  m_dialog->findChild<KdCheckBox*>(),
                                  cancel(),
                                  apply()};
    for (QWidget* const expected : order) {
        QCOMPARE(QApplication::focusWidget(), expected);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
}

void tst_KAdvanceSettings::carriesDataInAndOut()
{
    QVERIFY(m_dialog->data() == Stored);
    const _AudioAdvanceData other{0x20434141, 1, 22050, 96, 1, false};
    m_dialog->loadData(other);
    QVERIFY(m_dialog->data() == other);
}

void tst_KAdvanceSettings::applyReportsAndAccepts()
{
    const int result = execThen([this] { QTest::mouseClick(apply(), Qt::LeftButton); });
    QCOMPARE(result, int(QDialog::Accepted));
    QVERIFY(!m_dialog->isVisible());
    QCOMPARE(sentEvents(), QStringList{click("apply")});
}

void tst_KAdvanceSettings::cancelRejectsSilently()
{
    const int result = execThen([this] { QTest::mouseClick(cancel(), Qt::LeftButton); });
    QCOMPARE(result, int(QDialog::Rejected));
    QVERIFY(sentEvents().isEmpty());
}

void tst_KAdvanceSettings::otherWaysOutReject_data()
{
    QTest::addColumn<bool>("byKey");

    QTest::newRow("title bar") << false;
    QTest::newRow("Escape") << true;
}

void tst_KAdvanceSettings::otherWaysOutReject()
{
    QFETCH(bool, byKey);
    const int result = execThen([&] {
        if (byKey) {
            QTest::keyClick(m_dialog.get(), Qt::Key_Escape);
        } else {
            QTest::mouseClick(child<QToolButton>("KdTitleBar_Close"), Qt::LeftButton);
        }
    });
    QCOMPARE(result, int(QDialog::Rejected));
    QVERIFY(sentEvents().isEmpty());
}

void tst_KAdvanceSettings::returnPressesTheFocusedButton()
{
    const int result = execThen([this] {
        apply()->setFocus(Qt::TabFocusReason);
        QTest::keyClick(apply(), Qt::Key_Return);
    });
    QCOMPARE(result, int(QDialog::Accepted));
}

void tst_KAdvanceSettings::returnElsewhereCancels()
{
    const int result = execThen([this] {
        combo("KAudioSettings_Channel")->setFocus(Qt::TabFocusReason);
        QTest::keyClick(combo("KAudioSettings_Channel"), Qt::Key_Return);
    });
    QCOMPARE(result, int(QDialog::Rejected));
    QVERIFY(sentEvents().isEmpty());
}

void tst_KAdvanceSettings::openedListsAreReported_data()
{
    QTest::addColumn<QByteArray>("row");
    QTest::addColumn<QByteArray>("name");

    QTest::newRow("encoder") << QByteArray("Encoder") << QByteArray("audio_encoder");
    QTest::newRow("bit rate") << QByteArray("Bitrate") << QByteArray("audio_bit_rate");
    QTest::newRow("mode") << QByteArray("BitrateMode") << QByteArray("audio_bitrate_mode");
    QTest::newRow("channel") << QByteArray("Channel") << QByteArray("audio_channel");
    QTest::newRow("sample rate") << QByteArray("SampleRate") << QByteArray("audio_sample_rate");
}

void tst_KAdvanceSettings::openedListsAreReported()
{
    QFETCH(QByteArray, row);
    QFETCH(QByteArray, name);
    KdComboBox* const list = combo("KAudioSettings_" + row);
    m_dialog->show();
    list->showPopup();
    list->hidePopup();
    QCOMPARE(sentEvents(), QStringList{click(name)});
}

void tst_KAdvanceSettings::changeIsNotedUntilReset()
{
    QVERIFY(!m_dialog->isParaChanged());
    combo("KAudioSettings_Channel")->setCurrentIndex(0);
    QVERIFY(m_dialog->isParaChanged());
    m_dialog->resetParaChanged();
    QVERIFY(!m_dialog->isParaChanged());
}

void tst_KAdvanceSettings::loadingIsNoChange()
{
    m_dialog->loadData({0x20434141, 1, 22050, 96, 1, false});
    QVERIFY(!m_dialog->isParaChanged());
}

void tst_KAdvanceSettings::neverEmitsItsOwnChangeSignal()
{
    QSignalSpy changes(m_dialog.get(), &KAdvanceSettings::sigParaChange);
    combo("KAudioSettings_Channel")->setCurrentIndex(0);
    m_dialog->slotAudioParaChange();
    m_dialog->slotApply();
    QVERIFY(changes.isEmpty());
}

void tst_KAdvanceSettings::previewSwitchIsWrittenThoughCancelled()
{
    auto* const settings = KdAppSettings::GetInstance()->GetSettings()->GetAudioAdvanceSettings();
    settings->SetRecordPreview(true);
    execThen([this] {
        QTest::mouseClick(m_dialog->findChild<KdCheckBox*>(), Qt::LeftButton, Qt::NoModifier,
                          QPoint(8, 12));
        QTest::mouseClick(cancel(), Qt::LeftButton);
    });
    QVERIFY(!settings->GetRecordPreview());
}

void tst_KAdvanceSettings::writingIsLeftToTheOwner()
{
    auto* const settings = KdAppSettings::GetInstance()->GetSettings()->GetAudioAdvanceSettings();
    *settings = KAudioAdvanceSettings();
    execThen([this] {
        combo("KAudioSettings_Channel")->setCurrentIndex(0);
        combo("KAudioSettings_SampleRate")->setCurrentIndex(0);
        QTest::mouseClick(apply(), Qt::LeftButton);
    });
    QCOMPARE(settings->GetChannels(), 2);
    QCOMPARE(settings->GetSampleRate(), 44100);
    QCOMPARE(settings->GetBitrate(), 128);
    QCOMPARE(settings->GetBitrateMode(), 1u);
}

void tst_KAdvanceSettings::isReusedForTheNextShowing()
{
    QCOMPARE(execThen([this] { apply()->click(); }), int(QDialog::Accepted));
    QCOMPARE(execThen([this] { cancel()->click(); }), int(QDialog::Rejected));
    QCOMPARE(execThen([this] { apply()->click(); }), int(QDialog::Accepted));
    QVERIFY(m_dialog->data() == Stored);
    QCOMPARE(sentEvents(), QStringList({click("apply"), click("apply")}));
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KAdvanceSettings>(argc, argv);
}

#include "tst_KAdvanceSettings.moc"
