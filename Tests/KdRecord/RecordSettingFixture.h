#pragma once

#include <KdRecord/KRecordSettingParam.h>

#include <Support/KdTestCase.h>

#include <QDomDocument>

Q_DECLARE_METATYPE(KRecordSettingData)

/** Base of the tests of the recorders' settings: the store and its file, which are fresh each. */
class RecordSettingFixture : public KdTestCase
{
    Q_OBJECT

protected Q_SLOTS:
    void cleanup();

protected:
    static KRecordSettingParam* store() { return KRecordSettingParam::instance(); }
    /** What a restart of the host does to the store. */
    static void restart() { store()->release(); }

    /** @return a record that changes nothing but the preview flag. */
    static KRecordSettingData nothingBut(bool recordPreview);
    /** @return a record that changes nothing but the microphone, and has the preview on. */
    static KRecordSettingData microphone(const QString& name);
    static KRecordSettingData everything();
    static void compare(const KRecordSettingData& actual, const KRecordSettingData& expected);

    QString path() const { return documentDir() + QStringLiteral("/Settingdatas.xml"); }
    QDomDocument file() const;
    /** Replaces the file and gives it a time stamp of its own, seconds from a fixed moment. */
    void edit(const QByteArray& content, int seconds) const;
    /** @return the content of a file with that in the recorders' element. */
    static QByteArray recorderFile(const QByteArray& inner);
    /** @return "a(b(text)c)": names with their children in order, without white space between. */
    static QString outline(const QDomElement& element);
};
